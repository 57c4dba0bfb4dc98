#include "platform/qt/preview/TextFileView.h"

#include <QAccessible>
#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace tolvane::platform {

namespace {

constexpr int textMargin = 8;
constexpr int largestBarValue = 1'000'000'000;
/// Bytes. Longer texts are for other programs.
constexpr std::uint64_t longestCopy = 16'777'216;

} // namespace

TextFileView::TextFileView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(QStringLiteral("Text of the file"));
    viewport()->setBackgroundRole(QPalette::Base);
    QObject::connect(
        verticalScrollBar(), &QScrollBar::actionTriggered, this, [this](int action) { actOnSlider(action); });
    QObject::connect(verticalScrollBar(), &QScrollBar::sliderReleased, this, [this] { updateBars(); });
}

void TextFileView::showFile(std::shared_ptr<const OpenedFile> file, TextEncoding encoding) {
    clear();
    file_ = std::move(file);
    encoding_ = encoding;
    request(0, true);
}

void TextFileView::clear() {
    reading_.cancel();
    copying_.cancel();
    isReading_ = false;
    isAllSelected_ = false;
    file_ = nullptr;
    block_ = {};
    topLine_ = 0;
    horizontalScrollBar()->setValue(0);
    updateBars();
    viewport()->update();
}

QString TextFileView::shownText() const {
    QStringList shown;
    for (std::size_t line = topLine_; line < std::min(topLine_ + rowsSeen(), block_.lines.size()); ++line) {
        shown.append(block_.lines[line].text);
    }
    return shown.join(u'\n');
}

void TextFileView::scrollByLines(std::int64_t count) {
    if (block_.lines.empty()) {
        return;
    }
    const auto last = static_cast<std::int64_t>(lastTopLine());
    const auto line = std::clamp(static_cast<std::int64_t>(topLine_) + count, std::int64_t{0}, last);
    moveTo(static_cast<std::size_t>(line));
}

void TextFileView::goTo(std::uint64_t offset) {
    if (file_ == nullptr) {
        return;
    }
    const bool isHere = !block_.lines.empty() && offset >= block_.lines.front().offset
                        && (block_.reachesEnd || offset < block_.lines.back().offset);
    if (isHere) {
        moveTo(std::min(block_.lineAt(offset), lastTopLine()));
    } else {
        request(offset, true);
    }
}

bool TextFileView::canCopy() const {
    return !block_.lines.empty() && block_.fileSize <= longestCopy;
}

void TextFileView::selectAll() {
    isAllSelected_ = canCopy();
    viewport()->update();
}

void TextFileView::deselect() {
    if (std::exchange(isAllSelected_, false)) {
        viewport()->update();
    }
}

void TextFileView::copy() {
    if (!canCopy()) {
        return;
    }
    copying_.start([file = file_, encoding = encoding_](const auto& link) {
        auto text = readWholeText(*file, encoding, longestCopy);
        if (text) {
            link.deliver([text = *std::move(text)] { QGuiApplication::clipboard()->setText(text); });
        }
    });
}

void TextFileView::request(std::uint64_t offset, bool goesThere) {
    requestedOffset_ = offset;
    isReading_ = true;
    reading_.start([this, offset, goesThere, file = file_, encoding = encoding_](const auto& link) {
        auto block = readTextBlock(*file, encoding, offset);
        link.deliver([this, offset, goesThere, block = std::move(block)]() mutable {
            isReading_ = false;
            if (block) {
                take(*std::move(block), offset, goesThere);
            } else if (failed_) {
                failed_(block.error());
            }
        });
    });
}

void TextFileView::take(TextBlock block, std::uint64_t offset, bool goesThere) {
    const std::uint64_t top =
        goesThere || topLine_ >= block_.lines.size() ? offset : block_.lines[topLine_].offset;
    block_ = std::move(block);
    topLine_ = std::min(block_.lineAt(top), lastTopLine());
    updateBars();
    viewport()->update();
}

void TextFileView::moveTo(std::size_t line) {
    topLine_ = line;
    updateBars();
    viewport()->update();
    readAheadIfNeeded();
}

/// Asks for the lines around the top one when few are left on the side towards which the file goes on. A
/// block that was read for this very place has all that can be had.
void TextFileView::readAheadIfNeeded() {
    if (isReading_ || block_.lines.empty()) {
        return;
    }
    const std::size_t margin = 4 * rowsSeen();
    const bool needsEarlier = !block_.reachesBegin() && topLine_ < margin;
    const bool needsLater = !block_.reachesEnd && topLine_ + rowsSeen() + margin > block_.lines.size();
    const std::uint64_t offset = block_.lines[topLine_].offset;
    if ((needsEarlier || needsLater) && offset != requestedOffset_) {
        request(offset, false);
    }
}

std::size_t TextFileView::rowsSeen() const {
    return static_cast<std::size_t>(
        std::max(1, (viewport()->height() - textMargin) / fontMetrics().lineSpacing()));
}

std::size_t TextFileView::lastTopLine() const {
    return block_.lines.size() - std::min(block_.lines.size(), rowsSeen());
}

std::uint64_t TextFileView::bytesOfStep() const {
    return block_.fileSize / largestBarValue + 1;
}

void TextFileView::updateBars() {
    const std::size_t end = std::min(topLine_ + rowsSeen(), block_.lines.size());
    qsizetype widest = 0;
    for (std::size_t line = topLine_; line < end; ++line) {
        widest = std::max(widest, block_.lines[line].text.size());
    }
    const auto textWidth = fontMetrics().maxWidth() * static_cast<int>(widest) + 2 * textMargin;
    horizontalScrollBar()->setRange(0, std::max(0, textWidth - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(fontMetrics().averageCharWidth());

    if (QAccessible::isActive()) {
        setAccessibleDescription(shownText());
    }
    QScrollBar& bar = *verticalScrollBar();
    if (bar.isSliderDown()) {
        return; // The hand on it knows best.
    }
    const QSignalBlocker quietly(bar);
    const bool seesEnd = block_.reachesEnd && topLine_ >= lastTopLine();
    const auto value = [&](std::uint64_t offset) { return static_cast<int>(offset / bytesOfStep()); };
    if (block_.lines.empty() || (block_.reachesBegin() && block_.reachesEnd && lastTopLine() == 0)) {
        bar.setRange(0, 0);
        return;
    }
    // What is seen is the slider's length, so that at the end it touches the end.
    const std::uint64_t top = block_.lines[topLine_].offset;
    const std::uint64_t below =
        seesEnd || end >= block_.lines.size() ? block_.fileSize : block_.lines[end].offset;
    const int page = std::max(1, value(below - std::min(top, below)));
    bar.setRange(0, std::max(1, value(block_.fileSize) - page));
    bar.setPageStep(page);
    bar.setValue(seesEnd ? bar.maximum() : value(top));
}

void TextFileView::actOnSlider(int action) {
    const auto page = static_cast<std::int64_t>(rowsSeen());
    const int position = verticalScrollBar()->sliderPosition();
    switch (action) {
    case QAbstractSlider::SliderSingleStepAdd:
        scrollByLines(1);
        break;
    case QAbstractSlider::SliderSingleStepSub:
        scrollByLines(-1);
        break;
    case QAbstractSlider::SliderPageStepAdd:
        scrollByLines(page);
        break;
    case QAbstractSlider::SliderPageStepSub:
        scrollByLines(-page);
        break;
    case QAbstractSlider::SliderMove:
        goTo(
            position >= verticalScrollBar()->maximum()
                ? UINT64_MAX
                : static_cast<std::uint64_t>(position) * bytesOfStep());
        return;
    default:
        return;
    }
    // The lines decide where the slider is, not the step it wanted to make.
    verticalScrollBar()->setSliderPosition(verticalScrollBar()->value());
}

void TextFileView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(viewport());
    painter.setPen(palette().color(isAllSelected_ ? QPalette::HighlightedText : QPalette::Text));
    const int height = fontMetrics().lineSpacing();
    const int x = textMargin - horizontalScrollBar()->value();
    int y = textMargin / 2 + fontMetrics().ascent();
    const std::size_t end = std::min(topLine_ + rowsSeen() + 1, block_.lines.size());
    for (std::size_t line = topLine_; line < end; ++line, y += height) {
        const QString& text = block_.lines[line].text;
        if (isAllSelected_) {
            // Lines without a character are part of what is copied too.
            const int width =
                std::max(fontMetrics().averageCharWidth(), fontMetrics().horizontalAdvance(text));
            painter.fillRect(
                x, y - fontMetrics().ascent(), width, height, palette().color(QPalette::Highlight));
        }
        painter.drawText(x, y, text);
    }
}

void TextFileView::resizeEvent(QResizeEvent* /*event*/) {
    topLine_ = std::min(topLine_, block_.reachesEnd ? lastTopLine() : topLine_);
    updateBars();
    readAheadIfNeeded();
}

void TextFileView::wheelEvent(QWheelEvent* event) {
    constexpr int angleOfLine = 40;
    const QPoint angle = event->angleDelta();
    if (angle.x() != 0) {
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - angle.x());
    }
    if (angle.y() != 0) {
        const int lines = angle.y() / angleOfLine;
        scrollByLines(lines != 0 ? -lines : (angle.y() < 0 ? 1 : -1));
    }
    event->accept();
}

void TextFileView::mousePressEvent(QMouseEvent* event) {
    deselect();
    event->accept();
}

void TextFileView::keyPressEvent(QKeyEvent* event) {
    const auto page = static_cast<std::int64_t>(rowsSeen());
    switch (event->key()) {
    case Qt::Key_Down:
        scrollByLines(1);
        break;
    case Qt::Key_Up:
        scrollByLines(-1);
        break;
    case Qt::Key_PageDown:
        scrollByLines(page);
        break;
    case Qt::Key_PageUp:
        scrollByLines(-page);
        break;
    case Qt::Key_Home:
        goTo(0);
        break;
    case Qt::Key_End:
        goTo(UINT64_MAX);
        break;
    default:
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    deselect();
}

void TextFileView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) {
        updateBars();
        viewport()->update();
    }
}

void TextFileView::scrollContentsBy(int /*dx*/, int /*dy*/) {
    viewport()->update();
}

} // namespace tolvane::platform
