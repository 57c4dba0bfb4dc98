#include "platform/qt/text/ExactTextEdit.h"

#include "platform/qt/text/TextCommands.h"
#include "platform/qt/text/TokenColoring.h"
#include "platform/values/Utf8.h"

#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextOption>
#include <QUrl>

#include <algorithm>

namespace tolvane::platform {

namespace {

constexpr auto plainText = "text/plain";
constexpr auto exactPlainText = "text/plain;charset=utf-8";

/// What has to be added to `start` to get `whole`; nothing when that is not possible.
std::optional<AttributedString> additionTo(const AttributedString& start, const AttributedString& whole) {
    if (!std::string_view(whole.string()).starts_with(start.string())) {
        return std::nullopt;
    }
    const std::string_view text = whole.string();
    AttributedString head;
    AttributedString tail;
    std::size_t at = 0;
    for (const AttributedString::Run& run : whole.runs()) {
        const std::size_t end = at + run.length;
        const std::size_t border = std::clamp(start.string().size(), at, end);
        head.append({std::string(text.substr(at, border - at)), run.attributes});
        tail.append({std::string(text.substr(border, end - border)), run.attributes});
        at = end;
    }
    return head.runs() == start.runs() ? std::optional(std::move(tail)) : std::nullopt;
}

/// True for the same text with uniform attributes that drop none it had: then it can stay where it is.
bool isRestyling(const AttributedString& before, const AttributedString& after) {
    if (before.string() != after.string() || after.runs().size() != 1) {
        return false;
    }
    const TextAttributes& attributes = after.runs().front().attributes;
    // The document ignores a size that cannot be drawn.
    return (!attributes.font || attributes.font->pointSize > 0)
           && std::ranges::all_of(before.runs(), [&attributes](const AttributedString::Run& run) {
                  return (attributes.font || !run.attributes.font)
                         && (attributes.foregroundColor || !run.attributes.foregroundColor);
              });
}

/// True for the same text in the same fonts: there is one colour, which text without one has as well.
bool looksTheSame(const AttributedString& before, const AttributedString& after) {
    const auto withoutColors = [](const AttributedString& content) {
        AttributedString stripped;
        std::size_t at = 0;
        for (const AttributedString::Run& run : content.runs()) {
            stripped.append({content.string().substr(at, run.length), {{}, run.attributes.font}});
            at += run.length;
        }
        return stripped;
    };
    return before.string() == after.string() && withoutColors(before) == withoutColors(after);
}

/// True when pressing this key means its text, by the rules of Qt's own text widgets.
bool typesText(const QKeyEvent& event) {
    if (event.text().isEmpty()) {
        return false;
    }
    const QChar first = event.text().front();
    if (first.category() == QChar::Other_Format) {
        return true;
    }
    const Qt::KeyboardModifiers withoutShift = event.modifiers() & ~Qt::KeyboardModifiers(Qt::ShiftModifier);
    return withoutShift != Qt::ControlModifier
           && (first.isPrint() || first.category() == QChar::Other_PrivateUse || first.isSurrogate());
}

/// Finding a word break takes Qt quadratic time in the word's length; breaking anywhere does not.
bool hasVeryLongWord(std::string_view text) {
    constexpr std::size_t veryLong = 2000;
    while (text.size() > veryLong) {
        const std::size_t blank = text.substr(0, veryLong + 1).find_last_of(" \n\t");
        if (blank == std::string_view::npos) {
            return true;
        }
        text.remove_prefix(blank + 1);
    }
    return false;
}

std::string exactTextOf(const QMimeData& data) {
    return data.hasFormat(QLatin1String(exactPlainText))
               ? data.data(QLatin1String(exactPlainText)).toStdString()
               : data.text().toStdString();
}

bool holdsLocalFiles(const QMimeData& data) {
    return std::ranges::any_of(data.urls(), [](const QUrl& url) { return url.isLocalFile(); });
}

} // namespace

ExactTextEdit::ExactTextEdit(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    wrapFor({});
    setTextDirection(Qt::LeftToRight);
    connect(this, &QPlainTextEdit::textChanged, this, [this] { noteUserChange(); });
}

std::string ExactTextEdit::selectedText() const {
    const QTextCursor cursor = textCursor();
    return exactText(*document(), cursor.selectionStart(), cursor.selectionEnd());
}

void ExactTextEdit::setTextDirection(Qt::LayoutDirection direction) {
    QTextOption option = document()->defaultTextOption();
    option.setTextDirection(direction);
    document()->setDefaultTextOption(option);
}

void ExactTextEdit::setContent(const AttributedString& content) {
    if (content == content_) {
        return;
    }
    if (!content.runs().empty()) {
        typingAttributes_ = content.runs().front().attributes;
    }
    prepareWrapping(content.string());
    const std::optional<AttributedString> addition = additionTo(content_, content);
    if (addition && !content_.string().empty()) {
        appendContent(*addition);
    } else if (!isReadOnly() && looksTheSame(content_, content)) {
        // Nothing to be seen, so nothing to be undone.
    } else if (isRestyling(content_, content)) {
        restyle(content.runs().front().attributes);
    } else {
        replaceContent(content, content.string() == content_.string());
    }
    content_ = content;
    wrapFor(content_.string());
}

void ExactTextEdit::setWrapsAnywhere(bool wraps) {
    wrapsAnywhere_ = wraps;
    wrapFor(content_.string());
}

void ExactTextEdit::wrapFor(std::string_view text) {
    setWordWrapMode(
        wrapsAnywhere_ || hasVeryLongWord(text) ? QTextOption::WrapAnywhere
                                                : QTextOption::WrapAtWordBoundaryOrAnywhere);
}

void ExactTextEdit::prepareWrapping(std::string_view text) {
    // Text is laid out as soon as it is there.
    if (hasVeryLongWord(text)) {
        setWordWrapMode(QTextOption::WrapAnywhere);
    }
}

void ExactTextEdit::appendContent(const AttributedString& addition) {
    const QTextCursor before = textCursor();
    const std::pair place(before.anchor(), before.position());
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    insertContent(cursor, addition);

    QTextCursor after = textCursor();
    if (std::pair(after.anchor(), after.position()) != place) {
        after.setPosition(place.first);
        after.setPosition(place.second, QTextCursor::KeepAnchor);
        const int scrolled = verticalScrollBar()->value();
        setTextCursor(after);
        verticalScrollBar()->setValue(scrolled);
    }
}

void ExactTextEdit::replaceContent(const AttributedString& content, bool keepsPlace) {
    const QTextCursor before = textCursor();
    const std::pair place(before.anchor(), before.position());
    const int scrolled = verticalScrollBar()->value();
    QTextCursor cursor(document());
    cursor.select(QTextCursor::Document);
    insertContent(cursor, content);

    const int end = document()->characterCount() - 1;
    if (keepsPlace) {
        cursor.setPosition(std::min(place.first, end));
        cursor.setPosition(std::min(place.second, end), QTextCursor::KeepAnchor);
        setTextCursor(cursor);
        verticalScrollBar()->setValue(scrolled);
    } else {
        cursor.setPosition(isReadOnly() ? 0 : std::min(place.second, end));
        setTextCursor(cursor);
        ensureCursorVisible();
    }
}

void ExactTextEdit::restyle(const TextAttributes& attributes) {
    const int scrolled = verticalScrollBar()->value();
    const bool wasShowing = std::exchange(isShowing_, true);
    QTextCursor cursor(document());
    cursor.select(QTextCursor::Document);
    cursor.mergeCharFormat(attributesFormat(attributes));
    isShowing_ = wasShowing;
    verticalScrollBar()->setValue(scrolled);
}

void ExactTextEdit::insertContent(QTextCursor& cursor, const AttributedString& content) {
    const bool wasShowing = std::exchange(isShowing_, true);
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    std::string_view rest = content.string();
    bool hasTokens = false;
    for (const AttributedString::Run& run : content.runs()) {
        const TextAttributes& attributes = run.attributes;
        hasTokens |=
            insertExactText(cursor, rest.substr(0, run.length), attributesFormat(attributes), tokenStyle());
        rest.remove_prefix(run.length);
    }
    cursor.endEditBlock();
    if (hasTokens) {
        colorTokens();
    }
    isShowing_ = wasShowing;
}

void ExactTextEdit::colorTokens() {
    if (coloring_ == nullptr) {
        coloring_ = std::make_unique<TokenColoring>(*this, document());
        coloring_->rehighlight();
    }
}

void ExactTextEdit::insertAtCursor(std::string_view bytes) {
    prepareWrapping(bytes);
    QTextCursor cursor = textCursor();
    const QTextCharFormat format =
        document()->isEmpty() ? attributesFormat(typingAttributes_) : ordinaryFormat(cursor.charFormat());
    // Single characters are not steps of their own: the document undoes typed text word by word.
    const bool isOneStep = cursor.hasSelection() || decodeFirstCharacter(bytes).length < bytes.size();
    if (isOneStep) {
        cursor.beginEditBlock();
    }
    const bool hasTokens = insertExactText(cursor, bytes, format, tokenStyle());
    if (isOneStep) {
        cursor.endEditBlock();
    }
    if (hasTokens) {
        colorTokens();
    }
    setTextCursor(cursor);
    ensureCursorVisible();
}

void ExactTextEdit::noteUserChange() {
    if (isShowing_) {
        return;
    }
    removeEmptyPiece();
    AttributedString content = exactContent(*document());
    if (content != content_) {
        content_ = std::move(content);
        wrapFor(content_.string());
        userChangedContent();
    }
}

bool ExactTextEdit::event(QEvent* event) {
    const bool handled = QPlainTextEdit::event(event);
    if (event->type() == QEvent::ReadOnlyChange) {
        if (isReadOnly()) {
            setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        }
        // The other kind of tokens, which is no step to be undone.
        document()->setUndoRedoEnabled(false);
        if (!content_.string().empty()) {
            replaceContent(content_, false);
        }
        document()->setUndoRedoEnabled(!isReadOnly());
    } else if (event->type() == QEvent::PaletteChange && coloring_ != nullptr) {
        coloring_->rehighlight();
    }
    return handled;
}

/// The border of two pieces of a line is nothing to stop at or to remove: the key means what is beyond.
void ExactTextEdit::passBorder(const QKeyEvent& event) {
    const bool isBack = event.key() == Qt::Key_Left || event.key() == Qt::Key_Backspace;
    const bool isForth = event.key() == Qt::Key_Right || event.key() == Qt::Key_Delete;
    const bool isArrow = event.key() == Qt::Key_Left || event.key() == Qt::Key_Right;
    const bool selects = isArrow && event.modifiers().testFlag(Qt::ShiftModifier);
    QTextCursor cursor = textCursor();
    if ((!isBack && !isForth) || (cursor.hasSelection() && !selects)) {
        return;
    }
    const QTextBlock piece = isBack ? cursor.block() : cursor.block().next();
    if (continuesLine(piece) && (isBack ? cursor.atBlockStart() : cursor.atBlockEnd())) {
        cursor.setPosition(
            isBack ? piece.position() - 1 : piece.position(),
            selects ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor);
        setTextCursor(cursor);
    }
}

/// A piece of a line from which all was removed would look like an empty line.
void ExactTextEdit::removeEmptyPiece() {
    QTextCursor cursor = textCursor();
    const bool continues = continuesLine(cursor.block());
    if (cursor.block().length() == 1 && (continues || continuesLine(cursor.block().next()))) {
        isShowing_ = true;
        cursor.joinPreviousEditBlock();
        continues ? cursor.deletePreviousChar() : cursor.deleteChar();
        cursor.endEditBlock();
        isShowing_ = false;
    }
}

void ExactTextEdit::mousePressEvent(QMouseEvent* event) {
    const QTextCursor before = textCursor();
    QPlainTextEdit::mousePressEvent(event);
    QTextCursor cursor = textCursor();
    // What a press alone selects is the block of a third click, where the line is meant.
    if (!cursor.hasSelection() || cursor == before || event->modifiers().testFlag(Qt::ShiftModifier)) {
        return;
    }
    QTextBlock first = document()->findBlock(cursor.selectionStart());
    while (continuesLine(first)) {
        first = first.previous();
    }
    int end = cursor.selectionEnd();
    for (QTextBlock block = document()->findBlock(end); continuesLine(block); block = block.next()) {
        end = block.position() + block.length();
    }
    cursor.setPosition(first.position());
    cursor.setPosition(std::min(end, document()->characterCount() - 1), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void ExactTextEdit::keyPressEvent(QKeyEvent* event) {
    passBorder(*event);
    if (event->matches(QKeySequence::Copy)) {
        copySelectionOrAll(*this);
    } else if (isReadOnly()) {
        QPlainTextEdit::keyPressEvent(event);
    } else if (
        event->matches(QKeySequence::InsertParagraphSeparator)
        || event->matches(QKeySequence::InsertLineSeparator)) {
        insertAtCursor("\n");
    } else if (tabChangesFocus() && (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab)) {
        // There is no other widget to go to; the base class would insert it.
        event->ignore();
    } else if (typesText(*event)) {
        insertAtCursor(event->text().toStdString());
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void ExactTextEdit::inputMethodEvent(QInputMethodEvent* event) {
    if (isReadOnly() || event->commitString().isEmpty()) {
        QPlainTextEdit::inputMethodEvent(event);
        return;
    }
    // The base class removes the old composition and shows the next.
    QInputMethodEvent takingBack;
    takingBack.setCommitString({}, event->replacementStart(), event->replacementLength());
    QPlainTextEdit::inputMethodEvent(&takingBack);
    insertAtCursor(event->commitString().toStdString());
    if (!event->preeditString().isEmpty()) {
        QInputMethodEvent composing(event->preeditString(), event->attributes());
        QPlainTextEdit::inputMethodEvent(&composing);
    }
    event->accept();
}

void ExactTextEdit::dragEnterEvent(QDragEnterEvent* event) {
    if (holdsLocalFiles(*event->mimeData())) {
        // Files are for the window.
        event->ignore();
    } else {
        QPlainTextEdit::dragEnterEvent(event);
    }
}

void ExactTextEdit::dragMoveEvent(QDragMoveEvent* event) {
    if (holdsLocalFiles(*event->mimeData())) {
        event->ignore();
    } else {
        QPlainTextEdit::dragMoveEvent(event);
    }
}

QMimeData* ExactTextEdit::createMimeDataFromSelection() const {
    const QByteArray bytes = QByteArray::fromStdString(selectedText());
    auto copied = std::make_unique<QMimeData>();
    copied->setData(QLatin1String(plainText), bytes);
    copied->setData(QLatin1String(exactPlainText), bytes);
    return copied.release();
}

bool ExactTextEdit::canInsertFromMimeData(const QMimeData* source) const {
    return !isReadOnly() && source != nullptr
           && (source->hasText() || source->hasFormat(QLatin1String(exactPlainText)));
}

void ExactTextEdit::insertFromMimeData(const QMimeData* source) {
    if (canInsertFromMimeData(source)) {
        insertAtCursor(exactTextOf(*source));
    }
}

} // namespace tolvane::platform
