#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>
#include <QSize>
#include <QString>

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

/// How the decoder program answers on its standard output: a greeting, then messages. A message is its kind
/// and the length of its payload, both 32 bits with the lowest byte first, and the payload; so are all
/// numbers. Texts are UTF-8 without an ending.
///
///     description   contents, width, height, pages, page, frames (32 bits each), name of the format
///     frame         width, height, delay in milliseconds (32 bits each), then four bytes for each pixel,
///                   row by row: red, green and blue multiplied by the alpha that follows them
///     remark        a sentence about a fault that did not keep the picture from being shown
///     complete      nothing: everything has come
///     unrecognised  nothing: the file is neither a picture nor a PDF document
///     failure       a sentence that says why there is nothing to show, or nothing more
///
/// The last three end the answer.
namespace tolvane::platform {

inline constexpr std::string_view decoderGreeting = "TLVPIX01";

enum class DecoderMessageKind : std::uint32_t {
    description = 1,
    frame = 2,
    remark = 3,
    complete = 4,
    unrecognised = 5,
    failure = 6,
};

/// What may be asked for at most, and what an answer may hold at most. Both sides keep to it.
struct DecoderLimits {
    static constexpr std::uint32_t longestEdge = 4096;      ///< Of a frame, in pixels.
    static constexpr std::uint32_t mostFrames = 400;        ///< Of one answer.
    static constexpr std::uint64_t mostPixels = 25'165'824; ///< Of all frames of one answer together.
    static constexpr std::uint32_t longestText = 1000;      ///< In bytes.
};

struct DecodedDescription {
    enum class Contents : std::uint32_t { picture = 1, pdfPage = 2 };

    Contents contents = Contents::picture;
    std::uint32_t width = 0; ///< Of the picture itself in pixels, of the page in points.
    std::uint32_t height = 0;
    std::uint32_t pages = 1;
    std::uint32_t page = 1;   ///< From 1 on.
    std::uint32_t frames = 1; ///< As far as known; 0 where it is not.
    QString format;           ///< For instance "PNG".

    friend bool operator==(const DecodedDescription&, const DecodedDescription&) = default;
};

struct DecodedFrame {
    QImage image;
    std::uint32_t delay = 0; ///< Until the next frame, in milliseconds.
};

struct DecodedRemark {
    QString sentence;
};

struct DecodedEnd {
    enum class How { complete, unrecognised, failed };
    How how = How::complete;
    QString sentence; ///< Says why, where it failed.
};

using DecoderMessage = std::variant<DecodedDescription, DecodedFrame, DecodedRemark, DecodedEnd>;

/// The bytes of a message. Texts that are too long are cut; the image of a frame may be of any format.
QByteArray encodedMessage(const DecoderMessage& message);

/// Takes an answer apart, trusting none of it: whatever keeps not to the form or to the limits breaks it,
/// once and for all.
///
/// It holds no more than what was added and not yet taken; taking all messages after each addition keeps that
/// below the longest message and the addition.
class DecoderMessageReader {
public:
    /// No frame may be larger than this.
    explicit DecoderMessageReader(QSize maximumSize) : maximumSize_(maximumSize) {}

    void add(QByteArrayView bytes);

    /// The next message that has come whole. None comes after an end, nor out of a broken answer.
    std::optional<DecoderMessage> next();

    bool isBroken() const { return state_ == State::broken; }
    bool hasEnded() const { return state_ == State::ended; }

private:
    enum class State { greeting, messages, ended, broken };

    std::optional<DecoderMessage> broken();
    bool isAllowedLength(DecoderMessageKind kind, std::uint32_t length) const;
    std::optional<DecoderMessage> messageIn(DecoderMessageKind kind, QByteArrayView payload);
    std::optional<DecoderMessage> descriptionIn(QByteArrayView payload);
    std::optional<DecoderMessage> frameIn(QByteArrayView payload);
    std::optional<DecoderMessage> ended(DecodedEnd end);

    QSize maximumSize_;
    State state_ = State::greeting;
    QByteArray bytes_;
    std::uint32_t frames_ = 0;
    std::uint64_t pixels_ = 0;
    bool described_ = false;
};

} // namespace tolvane::platform
