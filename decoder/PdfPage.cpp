#include "decoder/Pictures.h"

#include <algorithm>
#include <cmath>
#include <poppler-qt6.h>

namespace tolvane::decoder {

using platform::DecodedDescription;

namespace {

constexpr qint64 front = 1024;
constexpr double pointsOfInch = 72;

/// The resolution at which the page just fits.
double resolutionFor(QSizeF points, QSize maximumSize) {
    const double scale =
        std::min(maximumSize.width() / points.width(), maximumSize.height() / points.height());
    return scale * pointsOfInch;
}

void ignore(const QString& /*message*/, const QVariant& /*closure*/) {}

void showPage(const Poppler::Page& page, DecodedDescription& description, QSize maximumSize, Answer& answer) {
    const QSizeF points = page.pageSizeF();
    if (!(points.width() > 0) || !(points.height() > 0) || !std::isfinite(points.width())
        || !std::isfinite(points.height())) {
        answer.fail(QStringLiteral("The PDF document is damaged: the page has no size."));
        return;
    }
    constexpr double largest = 1e9;
    description.width = static_cast<std::uint32_t>(std::lround(std::min(points.width(), largest)));
    description.height = static_cast<std::uint32_t>(std::lround(std::min(points.height(), largest)));
    answer.give(description);
    const double resolution = resolutionFor(points, maximumSize);
    const QImage image = page.renderToImage(resolution, resolution);
    if (image.isNull()) {
        answer.fail(QStringLiteral("The page cannot be drawn."));
        return;
    }
    // Rounding up may have made it one pixel too large.
    const QImage shown = image.copy(QRect({}, image.size().boundedTo(maximumSize)));
    if (answer.showFrame(shown)) {
        answer.complete();
    } else {
        answer.fail(QStringLiteral("The page is too large to be shown."));
    }
}

} // namespace

bool showPdfPage(QIODevice& file, const Request& request, Answer& answer) {
    if (!file.peek(front).contains("%PDF-")) {
        return false;
    }
    Poppler::setDebugErrorFunction(ignore, {});
    const auto document = Poppler::Document::load(&file);
    if (document == nullptr) {
        answer.fail(QStringLiteral("The PDF document is damaged: it cannot be opened."));
        return true;
    }
    if (document->isLocked()) {
        answer.fail(QStringLiteral("The PDF document is encrypted and requires a password."));
        return true;
    }
    const int pages = document->numPages();
    if (pages <= 0) {
        answer.fail(QStringLiteral("The PDF document is damaged: it has no pages."));
        return true;
    }
    document->setRenderHint(Poppler::Document::Antialiasing);
    document->setRenderHint(Poppler::Document::TextAntialiasing);
    DecodedDescription description;
    description.contents = DecodedDescription::Contents::pdfPage;
    description.format = QStringLiteral("PDF");
    description.pages = static_cast<std::uint32_t>(pages);
    description.page = static_cast<std::uint32_t>(std::clamp(request.page, 1, pages));
    const auto page = document->page(static_cast<int>(description.page) - 1);
    if (page == nullptr) {
        answer.fail(
            QStringLiteral("The PDF document is damaged: page %1 cannot be read.").arg(description.page));
        return true;
    }
    showPage(*page, description, request.maximumSize, answer);
    return true;
}

} // namespace tolvane::decoder
