#pragma once

#include <QString>
#include <QStyledItemDelegate>

#include <string_view>

/// Showing text that others have written. It may hold characters that are not seen themselves but change how
/// the text around them looks (see `isHiddenCharacter`).
namespace tolvane::platform {

/// How a hidden character is written out in windows: "⟨CR⟩", "⟨U+202E⟩".
QString writtenOut(char32_t hiddenCharacter);

/// What becomes of line feeds.
enum class LineFeeds { shown, kept };

/// The text with hidden characters written out.
QString visibleText(const QString& text, LineFeeds lineFeeds = LineFeeds::shown);

/// The same of bytes that should be UTF-8, with U+FFFD in place of what cannot be read.
QString visibleText(std::string_view bytes, LineFeeds lineFeeds = LineFeeds::shown);

/// The text as a file name that reads as it looks: an underscore in place of each hidden character.
QString harmlessName(const QString& text);

/// The text allowed to wrap within words that are longer than a line should be, behind a slash if there is
/// one, by zero-width spaces: so for labels alone.
QString breakableText(const QString& text);

/// The text cut in its middle to at most so many characters and lines, with "…" for what is left out, and
/// breakable.
QString boundedText(const QString& text, qsizetype longest, qsizetype mostLines);

/// The text cut in its middle to at most so many characters, with "…" for what is left out.
QString cutInMiddle(const QString& text, qsizetype longest);

/// The text as a tool tip that shows it as it is, never as markup: what looks like a picture in a name would
/// be opened otherwise.
QString plainToolTip(const QString& text);

/// Draws an item's name with its hidden characters written out.
class VisibleTextDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace tolvane::platform
