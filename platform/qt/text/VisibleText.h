#pragma once

#include <QFontMetrics>
#include <QString>
#include <QStyledItemDelegate>

#include <functional>
#include <string_view>
#include <vector>

/// Shows untrusted text, which may contain hidden characters (`isHiddenCharacter`).
namespace tolvane::platform {

/// How a hidden character is written out in windows: "⟨CR⟩", "⟨U+202E⟩".
QString writtenOut(char32_t hiddenCharacter);

/// What becomes of line feeds.
enum class LineFeeds { shown, kept };

/// The text with hidden characters written out.
QString visibleText(const QString& text, LineFeeds lineFeeds = LineFeeds::shown);

/// The same for bytes, with U+FFFD for invalid UTF-8.
QString visibleText(std::string_view bytes, LineFeeds lineFeeds = LineFeeds::shown);

/// The text as a file name that reads as it looks: an underscore in place of each hidden character.
QString harmlessName(const QString& text);

/// The text with zero-width spaces that let long words wrap, after a slash if possible. For labels only.
QString breakableText(const QString& text);

/// The text cut in the middle to at most so many characters and lines, with "…" for the rest, and breakable.
QString boundedText(const QString& text, qsizetype longest, qsizetype mostLines);

/// The text cut in its middle to at most so many characters, with "…" for what is left out.
QString cutInMiddle(const QString& text, qsizetype longest);

/// The text as a tool tip, never parsed as markup, which could open a picture that a name refers to.
QString plainToolTip(const QString& text);

/// Draws an item's name with its hidden characters written out.
class VisibleTextDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

/// Shortens texts with `shorten`, which leaves out the middle. Different texts that would become the same are
/// shown by their ends and the places where they differ, with "…" for the rest.
std::vector<QString> shortenedApart(
    const std::vector<QString>& texts, const std::function<QString(const QString&)>& shorten);

/// The same for a menu, at a width that suits one.
std::vector<QString> shortenedForMenu(const std::vector<QString>& texts, const QFontMetrics& font);

} // namespace tolvane::platform
