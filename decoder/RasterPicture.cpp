#include "decoder/Pictures.h"

#include <QImageIOHandler>
#include <QImageReader>

#include <algorithm>
#include <cmath>

namespace tolvane::decoder {

using platform::DecodedDescription;
using platform::DecodedRemark;
using platform::DecoderLimits;

namespace {

constexpr int allocationLimitInMebibytes = 256;
constexpr double mostPixelsAtAll = 1e9;
constexpr double mostPixelsDecodedWhole = 40e6;
constexpr int mostIconsCompared = 64;

double pixelsOf(QSize size) {
    return static_cast<double>(size.width()) * static_cast<double>(size.height());
}

/// Frames of an animation are scaled down if they would not all fit, but not below a minimum.
QSize sizeOfFrames(QSize size, QSize maximumSize, int frames) {
    constexpr int smallestEdge = 160;
    QSize shown = sizeWithin(size, maximumSize);
    const double share = static_cast<double>(DecoderLimits::mostPixels)
                         / std::clamp(frames, 1, static_cast<int>(DecoderLimits::mostFrames));
    if (pixelsOf(shown) > share) {
        const QSizeF smaller = QSizeF(shown) * std::sqrt(share / pixelsOf(shown));
        const QSize least = sizeWithin(shown, {smallestEdge, smallestEdge});
        shown =
            QSize(static_cast<int>(smaller.width()), static_cast<int>(smaller.height())).expandedTo(least);
    }
    return shown;
}

QImage scaledTo(const QImage& image, QSize size) {
    return image.size() == size ? image : image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// Some files contain one icon in several sizes; the largest is used.
void goToTheLargest(QImageReader& reader) {
    int best = 0;
    double bestPixels = -1;
    const int count = std::min(reader.imageCount(), mostIconsCompared);
    for (int index = 0; index < count && reader.jumpToImage(index); ++index) {
        if (const double pixels = pixelsOf(reader.size()); pixels > bestPixels) {
            best = index;
            bestPixels = pixels;
        }
    }
    reader.jumpToImage(best);
}

void remarkOnComplaints(Answer& answer) {
    for (const QString& complaint : complaints()) {
        answer.give(DecodedRemark{QStringLiteral("Decoder warning: %1").arg(complaint)});
    }
}

void failAsDamaged(const QImageReader& reader, Answer& answer) {
    QString reason = reader.errorString();
    if (reader.error() == QImageReader::InvalidDataError && !complaints().isEmpty()) {
        reason = complaints().constLast();
    }
    answer.fail(QStringLiteral("The picture is damaged or too large: %1.").arg(reason));
}

void showAnimation(QImageReader& reader, QSize size, Answer& answer) {
    int shown = 0;
    while (true) {
        // This is the size of the whole animation; single frames may cover parts of it.
        const QImage frame = reader.read();
        if (frame.isNull()) {
            break;
        }
        const int delay = std::max(reader.nextImageDelay(), 0);
        if (!answer.showFrame(scaledTo(frame, size), static_cast<std::uint32_t>(delay))) {
            answer.give(DecodedRemark{
                QStringLiteral("Only the first %1 frames of the animation are shown.").arg(shown)});
            break;
        }
        ++shown;
    }
    if (shown == 0) {
        failAsDamaged(reader, answer);
        return;
    }
    remarkOnComplaints(answer);
    answer.complete();
}

void showStillPicture(QImageReader& reader, QSize size, QSize shown, Answer& answer) {
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    // If the format supports it, the whole picture is never in memory.
    if (size.isValid() && shown != size
        && (reader.format() == "jpeg" || pixelsOf(size) > mostPixelsDecodedWhole)) {
        reader.setScaledSize(turned ? shown.transposed() : shown);
    }
    const QImage image = reader.read();
    if (image.isNull()) {
        failAsDamaged(reader, answer);
        return;
    }
    const bool given = answer.showFrame(scaledTo(image, size.isValid() ? shown : image.size()));
    if (!given) {
        answer.fail(QStringLiteral("The picture is too large to be shown."));
        return;
    }
    remarkOnComplaints(answer);
    answer.complete();
}

} // namespace

bool showRasterPicture(QIODevice& file, const Request& request, Answer& answer) {
    QImageReader::setAllocationLimit(allocationLimitInMebibytes);
    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    // SVG can refer to other files, so it is handled separately.
    if (!reader.canRead() || reader.format().startsWith("svg")) {
        return false;
    }
    const QString format = QString::fromLatin1(reader.format()).toUpper();
    const bool animated = reader.supportsAnimation() && reader.imageCount() != 1;
    if (!animated && reader.imageCount() > 1) {
        goToTheLargest(reader);
    }
    QSize size = reader.size();
    if (size.isValid() && (reader.transformation() & QImageIOHandler::TransformationRotate90)) {
        size.transpose();
    }
    DecodedDescription description;
    description.format = format;
    description.width = static_cast<std::uint32_t>(std::max(size.width(), 0));
    description.height = static_cast<std::uint32_t>(std::max(size.height(), 0));
    description.frames = animated ? static_cast<std::uint32_t>(std::max(reader.imageCount(), 0)) : 1;
    answer.give(description);
    if (!size.isValid() || size.isEmpty()) {
        failAsDamaged(reader, answer);
    } else if (pixelsOf(size) > mostPixelsAtAll) {
        answer.fail(QStringLiteral("The picture is too large to be decoded: %1 × %2 pixels.")
                        .arg(size.width())
                        .arg(size.height()));
    } else if (animated) {
        showAnimation(reader, sizeOfFrames(size, request.maximumSize, reader.imageCount()), answer);
    } else {
        showStillPicture(reader, size, sizeWithin(size, request.maximumSize), answer);
    }
    return true;
}

} // namespace tolvane::decoder
