#include "platform/qt/text/TextFieldWidget.h"

#include "platform/qt/text/VisibleText.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QHelpEvent>
#include <QResizeEvent>
#include <QScrollBar>
#include <QSizePolicy>
#include <QTextBlock>
#include <QTextLayout>
#include <QTextOption>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace tolvane::platform {

namespace {

constexpr double fieldMargin = 2;
constexpr qsizetype longestToolTip = 4000;

/// The height of a block's lines in this width, counted up to `lineLimit`, which is lowered by their number.
double linesHeight(const QTextBlock& block, const QTextDocument& document, double width, int& lineLimit) {
    // No more text than can fit: hardly any character is narrower than a pixel, and layout costs time.
    const auto mostCharacters = static_cast<qsizetype>(width * lineLimit) + 1;
    QTextLayout layout(block.text().left(mostCharacters), document.defaultFont());
    layout.setTextOption(document.defaultTextOption());
    double height = 0;
    layout.beginLayout();
    while (lineLimit > 0) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLeadingIncluded(true);
        line.setLineWidth(width);
        height += line.height();
        --lineLimit;
    }
    layout.endLayout();
    return height;
}

} // namespace

TextFieldWidget::TextFieldWidget(QWidget* parent) : ExactTextEdit(parent) {
    setReadOnly(true);
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(fieldMargin);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void TextFieldWidget::setText(std::string text) {
    setContent({std::move(text), {}});
    heights_.clear();
    updateGeometry();
}

void TextFieldWidget::setMaximumLines(int lines) {
    maximumLines_ = std::max(lines, 1);
    heights_.clear();
    updateGeometry();
}

void TextFieldWidget::setRightAligned(bool aligned) {
    QTextOption option = document()->defaultTextOption();
    option.setAlignment(aligned ? Qt::AlignRight : Qt::AlignLeft);
    document()->setDefaultTextOption(option);
}

QString TextFieldWidget::cutText() const {
    return verticalScrollBar()->maximum() > verticalScrollBar()->minimum() ? displayedText(*document())
                                                                           : QString();
}

double TextFieldWidget::textHeight(double width) const {
    double height = 0;
    int lineLimit = maximumLines_;
    for (QTextBlock block = document()->firstBlock(); block.isValid() && lineLimit > 0;
         block = block.next()) {
        height += linesHeight(block, *document(), width, lineLimit);
    }
    return height;
}

int TextFieldWidget::heightAround(double textHeight) const {
    const QMargins margins = contentsMargins() + viewportMargins();
    // The base class scrolls unless a pixel more than the text and its margins is there.
    return static_cast<int>(std::ceil(textHeight + 2 * document()->documentMargin())) + 1 + 2 * frameWidth()
           + margins.top() + margins.bottom();
}

int TextFieldWidget::heightForWidth(int width) const {
    if (const auto known = heights_.find(width); known != heights_.end()) {
        return known->second;
    }
    const QMargins margins = contentsMargins() + viewportMargins();
    const double available =
        width - 2 * frameWidth() - margins.left() - margins.right() - 2 * document()->documentMargin();
    const int height = heightAround(textHeight(std::max(available, 1.0)));
    constexpr std::size_t mostWidths = 16;
    if (heights_.size() >= mostWidths) {
        heights_.clear();
    }
    heights_.emplace(width, height);
    return height;
}

void TextFieldWidget::changeEvent(QEvent* event) {
    ExactTextEdit::changeEvent(event);
    // A font or a style may have changed, and margins with it; or the kind of tokens.
    heights_.clear();
}

QSize TextFieldWidget::minimumSizeHint() const {
    constexpr int fewCharacters = 8;
    const QFontMetricsF metrics(document()->defaultFont());
    return {
        static_cast<int>(std::ceil(metrics.averageCharWidth() * fewCharacters)),
        heightAround(metrics.lineSpacing())};
}

QSize TextFieldWidget::sizeHint() const {
    constexpr int usualCharacters = 40;
    const QFontMetricsF metrics(document()->defaultFont());
    const int usual = static_cast<int>(std::ceil(metrics.averageCharWidth() * usualCharacters));
    return {usual, heightForWidth(std::max(width(), minimumSizeHint().width()))};
}

void TextFieldWidget::resizeEvent(QResizeEvent* event) {
    ExactTextEdit::resizeEvent(event);
    if (event->size().width() != event->oldSize().width()) {
        // The hint is that for the width at hand.
        updateGeometry();
    }
}

bool TextFieldWidget::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const QString cut = cutText();
        if (!cut.isEmpty()) {
            QString shown = cut.left(longestToolTip);
            if (cut.size() > longestToolTip) {
                shown += QChar(0x2026);
            }
            QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plainToolTip(shown), viewport());
            return true;
        }
    }
    return ExactTextEdit::viewportEvent(event);
}

} // namespace tolvane::platform
