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

/// How the decoder program answers on its standard output: a greeting, then messages. A message is its kind,
/// the length of its payload, and the payload. All numbers are 32 bits, little-endian; texts are UTF-8
/// without an end mark.
///
///     description   contents, width, height, pages, page, frames, name of the format
///     frame         width, height, delay in milliseconds, then four bytes for each pixel, row by row:
///                   red, green and blue multiplied by the alpha that follows them
///     remark        a sentence about a fault that did not prevent decoding
///     complete      empty: the answer is complete
///     unrecognised  empty: the file is neither a picture nor a PDF document
///     failure       a sentence that says why nothing, or nothing more, is shown
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

/// The limits of a request and of its answer, enforced by both sides.
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

/// The bytes of a message. Texts that are too long are cut; a frame may have any image format.
QByteArray encodedMessage(const DecoderMessage& message);

/// Parses an answer as untrusted bytes: anything invalid or beyond the limits breaks it for good. It stores
/// only what was added and not yet returned: less than the longest message and the last addition, if all
/// messages are taken after each addition.
class DecoderMessageReader {
public:
    /// No frame may be larger than this.
    explicit DecoderMessageReader(QSize maximumSize) : maximumSize_(maximumSize) {}

    void add(QByteArrayView bytes);

    /// The next complete message. None follows an end or a fault.
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
