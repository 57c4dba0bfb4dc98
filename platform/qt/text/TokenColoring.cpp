#include "platform/qt/text/TokenColoring.h"

#include "platform/qt/text/ExactText.h"

#include <QColor>
#include <QPalette>
#include <QTextBlock>
#include <QWidget>

namespace tolvane::platform {

namespace {

/// Between the colours of text and selection, which is readable with any palette.
QColor tokenColor(const QPalette& palette) {
    const QColor text = palette.color(QPalette::Text);
    const QColor highlight = palette.color(QPalette::Highlight);
    const auto mixed = [](int first, int second) { return (2 * first + 3 * second) / 5; };
    return {
        mixed(text.red(), highlight.red()), mixed(text.green(), highlight.green()),
        mixed(text.blue(), highlight.blue())};
}

} // namespace

void TokenColoring::highlightBlock(const QString& /*text*/) {
    const QTextBlock block = currentBlock();
    for (auto i = block.begin(); !i.atEnd(); ++i) {
        const QTextFragment fragment = i.fragment();
        if (isToken(fragment.charFormat())) {
            setFormat(
                fragment.position() - block.position(), fragment.length(), tokenColor(widget_.palette()));
        }
    }
}

} // namespace tolvane::platform
