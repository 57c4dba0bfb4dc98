#pragma once

#include "platform/model/AttributedString.h"
#include "platform/qt/text/ExactText.h"

#include <QPlainTextEdit>
#include <QSyntaxHighlighter>

#include <memory>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// A text widget that keeps its text to the byte (`ExactText.h`), however it is set, typed, pasted, dropped,
/// copied or dragged. Only `setContent` and the user change the text; the base class's setters are for
/// the text that a form begins with.
class ExactTextEdit : public QPlainTextEdit {
public:
    explicit ExactTextEdit(QWidget* parent = nullptr);

    /// What is shown, to the byte.
    const AttributedString& content() const { return content_; }

    /// The bytes of what is selected; a token selected in part counts as a whole.
    std::string selectedText() const;

    /// The direction of every line, whatever letters it begins with. Left to right at first.
    void setTextDirection(Qt::LayoutDirection direction);

    /// Whether lines break anywhere. Initially only those with a very long word do.
    void setWrapsAnywhere(bool wraps);

protected:
    /// Shows this text. If it extends the previous one, only the new part is added. Otherwise the cursor
    /// stays where possible. In an editable text, a change of the text or its fonts is one step that can be
    /// undone.
    void setContent(const AttributedString& content);

    /// The user has changed `content()`.
    virtual void userChangedContent() {}

    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void wrapFor(std::string_view text);
    void prepareWrapping(std::string_view text);
    void insertAtCursor(std::string_view bytes);
    void appendContent(const AttributedString& addition);
    void replaceContent(const AttributedString& content, bool keepsPlace);
    void restyle(const TextAttributes& attributes);
    void insertContent(QTextCursor& cursor, const AttributedString& content);
    void passBorder(const QKeyEvent& event);
    void removeEmptyPiece();
    void colorTokens();
    void noteUserChange();
    TokenStyle tokenStyle() const { return isReadOnly() ? TokenStyle::words : TokenStyle::singleCharacters; }

    AttributedString content_;
    TextAttributes typingAttributes_;
    bool isShowing_ = false;
    bool wrapsAnywhere_ = false;
    /// Made with the first token: most texts never have one.
    std::unique_ptr<QSyntaxHighlighter> coloring_;
};

} // namespace tolvane::platform
