// Parses any bytes as the decoder's answer, in pieces of any size.
#include "fuzz/Fuzz.h"
#include "platform/qt/preview/DecoderMessages.h"

#include <QByteArray>
#include <QSize>

#include <string>
#include <variant>
#include <vector>

namespace {

using namespace tolvane;
using platform::DecoderMessage;

constexpr QSize maximumSize(64, 48);

struct Answer {
    std::vector<DecoderMessage> messages;
    bool isBroken = false;
    bool hasEnded = false;
};

Answer read(QByteArrayView bytes, qsizetype piece) {
    platform::DecoderMessageReader reader(maximumSize);
    Answer answer;
    for (qsizetype at = 0; at < bytes.size(); at += piece) {
        reader.add(bytes.sliced(at, std::min(piece, bytes.size() - at)));
        while (auto message = reader.next()) {
            fuzz::require(!reader.isBroken(), "nothing comes out of a broken answer");
            answer.messages.push_back(*std::move(message));
        }
    }
    answer.isBroken = reader.isBroken();
    answer.hasEnded = reader.hasEnded();
    fuzz::require(!reader.next(), "what is taken is gone");
    return answer;
}

QByteArray written(const std::vector<DecoderMessage>& messages) {
    QByteArray bytes(platform::decoderGreeting.data(), platform::decoderGreeting.size());
    for (const DecoderMessage& message : messages) {
        bytes += platform::encodedMessage(message);
    }
    return bytes;
}

void check(const Answer& answer) {
    std::uint64_t pixels = 0;
    std::size_t frames = 0;
    bool isDescribed = false;
    for (const DecoderMessage& message : answer.messages) {
        const bool isEnd = std::holds_alternative<platform::DecodedEnd>(message);
        fuzz::require(!isEnd || &message == &answer.messages.back(), "nothing follows the end");
        if (const auto* const description = std::get_if<platform::DecodedDescription>(&message)) {
            fuzz::require(!isDescribed, "an answer is described once");
            fuzz::require(
                description->page >= 1 && description->page <= description->pages, "the page is one of all");
            isDescribed = true;
        }
        if (const auto* const frame = std::get_if<platform::DecodedFrame>(&message)) {
            const QSize size = frame->image.size();
            fuzz::require(isDescribed, "a frame comes after the description");
            fuzz::require(
                !size.isEmpty() && size.boundedTo(maximumSize) == size,
                "a frame is not larger than asked for");
            pixels += static_cast<std::uint64_t>(size.width()) * static_cast<std::uint64_t>(size.height());
            ++frames;
        }
    }
    fuzz::require(
        frames <= platform::DecoderLimits::mostFrames && pixels <= platform::DecoderLimits::mostPixels,
        "an answer keeps to its limits");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    // Remarks stay readable however long they are.
    const QString sentence = QString::fromUtf8(
        QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)).repeated(8));
    const QByteArray said = written(
        {platform::DecodedRemark{sentence},
         platform::DecodedEnd{platform::DecodedEnd::How::failed, sentence}});
    const Answer heard = read(said, said.size());
    fuzz::require(heard.hasEnded && !heard.isBroken && heard.messages.size() == 2, "what is said is heard");

    QByteArray bytes(reinterpret_cast<const char*>(data + 1), static_cast<qsizetype>(size - 1));
    for (const bool greet : {false, true}) {
        if (greet) {
            bytes.prepend(platform::decoderGreeting.data(), platform::decoderGreeting.size());
        }
        const Answer inPieces = read(bytes, data[0] + 1);
        const Answer byByte = read(bytes, 1);
        check(inPieces);
        check(byByte);
        fuzz::require(
            inPieces.isBroken == byByte.isBroken && inPieces.hasEnded == byByte.hasEnded,
            "the pieces do not matter to what is right");
        if (!byByte.isBroken) {
            const QByteArray first = written(byByte.messages);
            fuzz::require(first == written(inPieces.messages), "the pieces do not matter to what is read");
            const Answer again = read(first, std::max<qsizetype>(first.size(), 1));
            fuzz::require(!again.isBroken && written(again.messages) == first, "what is read can be written");
        }
    }
    return 0;
}
