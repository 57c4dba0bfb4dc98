#pragma once

#include <QString>
#include <QStyledItemDelegate>

/// Showing text that others have written. File names may hold characters that are not seen themselves but
/// change how the text around them looks.
namespace tolvane::platform {

/// True for characters that steer instead of being seen: controls, line and paragraph separators, marks
/// and overrides of the writing direction.
bool steersText(QChar character);

/// What becomes of line feeds.
enum class LineFeeds { shown, kept };

/// The text with what steers it written out, such as "\n" or "\u{202E}".
QString visibleText(const QString& text, LineFeeds lineFeeds = LineFeeds::shown);

/// The text as a file name that reads as it looks: an underscore in place of each character that steers.
QString harmlessName(QString text);

/// The text cut in its middle to at most so many characters and lines, with "…" for what is left out, and
/// allowed to wrap within words that are longer than a line should be (by zero-width spaces). For labels.
QString boundedText(const QString& text, qsizetype longest, qsizetype mostLines);

/// The text cut in its middle to at most so many characters, with "…" for what is left out.
QString cutInMiddle(const QString& text, qsizetype longest);

/// The text allowed to wrap within words that are longer than a line should be. For showing alone: the
/// breaks are characters.
QString withBreaksInLongWords(const QString& text);

/// The text as a tool tip that shows it as it is, never as markup: what looks like a picture in a name would
/// be opened otherwise.
QString plainToolTip(const QString& text);

/// Draws an item's name with what steers it written out.
class VisibleTextDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace tolvane::platform
