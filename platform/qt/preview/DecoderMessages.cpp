#include "platform/qt/preview/DecoderMessages.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <utility>

namespace tolvane::platform {

namespace {

constexpr qsizetype numberLength = 4;
constexpr qsizetype headLength = 2 * numberLength;
constexpr qsizetype descriptionHeadLength = 6 * numberLength;
constexpr qsizetype frameHeadLength = 3 * numberLength;
constexpr std::uint32_t bytesOfPixel = 4;
constexpr auto pixelFormat = QImage::Format_RGBA8888_Premultiplied;

void appendNumber(QByteArray& bytes, std::uint32_t number) {
    const std::uint32_t stored = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&stored), numberLength);
}

std::uint32_t numberAt(QByteArrayView bytes, qsizetype offset) {
    return qFromLittleEndian<std::uint32_t>(bytes.sliced(offset, numberLength).data());
}

QByteArray encodedText(const QString& text) {
    QString cut = text;
    while (cut.toUtf8().size() > static_cast<qsizetype>(DecoderLimits::longestText)) {
        cut.truncate(std::min<qsizetype>(cut.size() - 1, DecoderLimits::longestText));
        if (!cut.isEmpty() && cut.back().isHighSurrogate()) {
            cut.chop(1);
        }
    }
    return cut.toUtf8();
}

QByteArray withHead(DecoderMessageKind kind, const QByteArray& payload) {
    QByteArray bytes;
    bytes.reserve(headLength + payload.size());
    appendNumber(bytes, std::to_underlying(kind));
    appendNumber(bytes, static_cast<std::uint32_t>(payload.size()));
    return bytes.append(payload);
}

QByteArray encoded(const DecodedDescription& description) {
    QByteArray payload;
    appendNumber(payload, std::to_underlying(description.contents));
    appendNumber(payload, description.width);
    appendNumber(payload, description.height);
    appendNumber(payload, description.pages);
    appendNumber(payload, description.page);
    appendNumber(payload, description.frames);
    return withHead(DecoderMessageKind::description, payload.append(encodedText(description.format)));
}

QByteArray encoded(const DecodedFrame& frame) {
    const QImage image = frame.image.convertToFormat(pixelFormat);
    QByteArray payload;
    payload.reserve(frameHeadLength + static_cast<qsizetype>(bytesOfPixel) * image.width() * image.height());
    appendNumber(payload, static_cast<std::uint32_t>(image.width()));
    appendNumber(payload, static_cast<std::uint32_t>(image.height()));
    appendNumber(payload, frame.delay);
    for (int row = 0; row < image.height(); ++row) {
        payload.append(
            reinterpret_cast<const char*>(image.constScanLine(row)),
            static_cast<qsizetype>(bytesOfPixel) * image.width());
    }
    return withHead(DecoderMessageKind::frame, payload);
}

QByteArray encoded(const DecodedRemark& remark) {
    return withHead(DecoderMessageKind::remark, encodedText(remark.sentence));
}

QByteArray encoded(const DecodedEnd& end) {
    switch (end.how) {
    case DecodedEnd::How::complete:
        return withHead(DecoderMessageKind::complete, {});
    case DecodedEnd::How::unrecognised:
        return withHead(DecoderMessageKind::unrecognised, {});
    case DecodedEnd::How::failed:
        break;
    }
    return withHead(DecoderMessageKind::failure, encodedText(end.sentence));
}

} // namespace

QByteArray encodedMessage(const DecoderMessage& message) {
    return std::visit([](const auto& kind) { return encoded(kind); }, message);
}

void DecoderMessageReader::add(QByteArrayView bytes) {
    if (state_ == State::ended && !bytes.isEmpty()) {
        state_ = State::broken; // Nothing may come after the end.
    }
    if (state_ != State::broken) {
        bytes_.append(bytes);
    }
}

std::optional<DecoderMessage> DecoderMessageReader::next() {
    if (state_ == State::greeting) {
        const QByteArrayView greeting(decoderGreeting);
        const qsizetype come = std::min(bytes_.size(), greeting.size());
        if (QByteArrayView(bytes_).first(come) != greeting.first(come)) {
            return broken();
        }
        if (come < greeting.size()) {
            return std::nullopt;
        }
        bytes_.remove(0, come);
        state_ = State::messages;
    }
    if (state_ != State::messages || bytes_.size() < headLength) {
        return std::nullopt;
    }
    const auto kind = static_cast<DecoderMessageKind>(numberAt(bytes_, 0));
    const std::uint32_t length = numberAt(bytes_, numberLength);
    if (!isAllowedLength(kind, length)) {
        return broken();
    }
    if (bytes_.size() - headLength < static_cast<qsizetype>(length)) {
        return std::nullopt;
    }
    auto message = messageIn(kind, QByteArrayView(bytes_).sliced(headLength, length));
    bytes_.remove(0, message ? headLength + static_cast<qsizetype>(length) : bytes_.size());
    if (hasEnded() && !bytes_.isEmpty()) {
        return broken();
    }
    return message;
}

std::optional<DecoderMessage> DecoderMessageReader::broken() {
    state_ = State::broken;
    bytes_.clear();
    return std::nullopt;
}

/// Checked before the payload has arrived, so that no excessive length is waited for.
bool DecoderMessageReader::isAllowedLength(DecoderMessageKind kind, std::uint32_t length) const {
    switch (kind) {
    case DecoderMessageKind::description:
        return length >= descriptionHeadLength
               && length <= descriptionHeadLength + DecoderLimits::longestText;
    case DecoderMessageKind::frame:
        return length > frameHeadLength
               && length - frameHeadLength
                      <= static_cast<qsizetype>(bytesOfPixel) * maximumSize_.width() * maximumSize_.height();
    case DecoderMessageKind::remark:
    case DecoderMessageKind::failure:
        return length <= DecoderLimits::longestText;
    case DecoderMessageKind::complete:
    case DecoderMessageKind::unrecognised:
        return length == 0;
    }
    return false;
}

std::optional<DecoderMessage> DecoderMessageReader::messageIn(
    DecoderMessageKind kind, QByteArrayView payload) {
    switch (kind) {
    case DecoderMessageKind::description:
        return descriptionIn(payload);
    case DecoderMessageKind::frame:
        return frameIn(payload);
    case DecoderMessageKind::remark:
        return DecodedRemark{QString::fromUtf8(payload)};
    case DecoderMessageKind::complete:
        return ended({DecodedEnd::How::complete, {}});
    case DecoderMessageKind::unrecognised:
        return ended({DecodedEnd::How::unrecognised, {}});
    case DecoderMessageKind::failure:
        return ended({DecodedEnd::How::failed, QString::fromUtf8(payload)});
    }
    return broken();
}

std::optional<DecoderMessage> DecoderMessageReader::descriptionIn(QByteArrayView payload) {
    DecodedDescription description;
    const std::uint32_t contents = numberAt(payload, 0);
    description.contents = static_cast<DecodedDescription::Contents>(contents);
    description.width = numberAt(payload, numberLength);
    description.height = numberAt(payload, 2 * numberLength);
    description.pages = numberAt(payload, 3 * numberLength);
    description.page = numberAt(payload, 4 * numberLength);
    description.frames = numberAt(payload, 5 * numberLength);
    description.format = QString::fromUtf8(payload.sliced(descriptionHeadLength));
    const bool known = description.contents == DecodedDescription::Contents::picture
                       || description.contents == DecodedDescription::Contents::pdfPage;
    constexpr std::uint32_t largest = 0x7FFF'FFFF; // Qt counts in signed numbers.
    if (!known || described_ || description.pages == 0 || description.page == 0
        || description.page > description.pages || description.pages > largest || description.width > largest
        || description.height > largest) {
        return broken();
    }
    described_ = true;
    return description;
}

std::optional<DecoderMessage> DecoderMessageReader::frameIn(QByteArrayView payload) {
    const std::uint64_t width = numberAt(payload, 0);
    const std::uint64_t height = numberAt(payload, numberLength);
    const bool fits = width > 0 && height > 0 && width <= static_cast<std::uint64_t>(maximumSize_.width())
                      && height <= static_cast<std::uint64_t>(maximumSize_.height());
    const auto pixelBytes = static_cast<std::uint64_t>(payload.size() - frameHeadLength);
    ++frames_;
    pixels_ += fits ? width * height : 0;
    if (!described_ || !fits || pixelBytes != width * height * bytesOfPixel
        || frames_ > DecoderLimits::mostFrames || pixels_ > DecoderLimits::mostPixels) {
        return broken();
    }
    QImage image(static_cast<int>(width), static_cast<int>(height), pixelFormat);
    if (image.isNull()) {
        return broken();
    }
    const auto rowLength = static_cast<std::size_t>(width * bytesOfPixel);
    const char* row = payload.data() + frameHeadLength;
    for (int index = 0; index < image.height(); ++index, row += rowLength) {
        std::memcpy(image.scanLine(index), row, rowLength);
    }
    return DecodedFrame{std::move(image), numberAt(payload, 2 * numberLength)};
}

std::optional<DecoderMessage> DecoderMessageReader::ended(DecodedEnd end) {
    state_ = State::ended;
    return end;
}

} // namespace tolvane::platform
