#include "decoder/Pictures.h"

#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>

namespace tolvane::decoder {

using platform::DecodedDescription;

namespace {

constexpr qint64 longestSvg = 32'000'000;
constexpr qint64 svgFront = 65'536;

/// Whether the root element is that of an SVG picture. Only the front is examined.
bool isSvg(QIODevice& file) {
    const QByteArray bytes = file.peek(svgFront);
    // XML can begin only with a byte-order mark, blanks and a tag, which excludes most files.
    const QByteArray trimmed = (bytes.startsWith("\xEF\xBB\xBF") ? bytes.mid(3) : bytes).left(256).trimmed();
    const bool isWide = bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
    if (!isWide && !trimmed.startsWith('<')) {
        return false;
    }
    QXmlStreamReader reader(bytes);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement) {
            return reader.name() == u"svg";
        }
    }
    return false;
}

QSize sizeOf(const QSvgRenderer& renderer) {
    constexpr int largest = 1'000'000;
    const QSize size = renderer.defaultSize();
    return size.isEmpty() ? QSize(300, 150) : size.boundedTo({largest, largest});
}

} // namespace

bool showVectorPicture(QIODevice& file, const Request& request, Answer& answer) {
    if (!isSvg(file)) {
        return false;
    }
    if (file.size() > longestSvg) {
        answer.fail(QStringLiteral("The SVG picture is too large to be shown: %1 bytes.").arg(file.size()));
        return true;
    }
    const auto svg = selfContainedSvg(file.read(longestSvg));
    QSvgRenderer renderer;
    if (!svg || !renderer.load(*svg)) {
        answer.fail(QStringLiteral("The SVG picture is damaged: it is not well-formed SVG."));
        return true;
    }
    const QSize size = sizeOf(renderer);
    DecodedDescription description;
    description.format = QStringLiteral("SVG");
    description.width = static_cast<std::uint32_t>(size.width());
    description.height = static_cast<std::uint32_t>(size.height());
    answer.give(description);
    // Vector drawings are scaled up to the requested size.
    QImage image(
        size.scaled(request.maximumSize, Qt::KeepAspectRatio).expandedTo({1, 1}),
        QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) {
        answer.fail(QStringLiteral("There is not enough memory to draw the picture."));
        return true;
    }
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        renderer.render(&painter);
    }
    if (answer.showFrame(image)) {
        answer.complete();
    } else {
        answer.fail(QStringLiteral("The picture is too large to be shown."));
    }
    return true;
}

} // namespace tolvane::decoder
