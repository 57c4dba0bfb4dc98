#include "platform/qt/preview/DecoderMessages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <variant>
#include <vector>

namespace tolvane::platform {
namespace {

constexpr QSize room(100, 100);

QByteArray greeting() {
    return QByteArrayView(decoderGreeting).toByteArray();
}

const DecodedDescription someDescription{
    DecodedDescription::Contents::picture, 640, 480, 1, 1, 3, QStringLiteral("GIF")};

QByteArray described() {
    return greeting() + encodedMessage(someDescription);
}

QImage someImage(QSize size = {3, 2}) {
    QImage image(size, QImage::Format_RGBA8888_Premultiplied);
    image.fill(QColor(10, 20, 30));
    return image;
}

QByteArray wholeAnswer() {
    return described() + encodedMessage(DecodedFrame{someImage(), 70})
           + encodedMessage(DecodedRemark{QStringLiteral("Größe")}) + encodedMessage(DecodedEnd{});
}

std::vector<DecoderMessage> messagesIn(DecoderMessageReader& reader, const QByteArray& bytes = {}) {
    reader.add(bytes);
    std::vector<DecoderMessage> messages;
    while (auto message = reader.next()) {
        messages.push_back(*std::move(message));
    }
    return messages;
}

DecodedEnd onlyEndIn(const QByteArray& bytes) {
    DecoderMessageReader reader(room);
    const auto messages = messagesIn(reader, greeting() + bytes);
    EXPECT_EQ(messages.size(), 1U);
    return std::get<DecodedEnd>(messages.at(0));
}

bool isRefused(const QByteArray& bytes) {
    DecoderMessageReader reader(room);
    messagesIn(reader, bytes);
    return reader.isBroken();
}

QByteArray number(std::uint32_t value) {
    QByteArray bytes;
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.append(static_cast<char>((value >> static_cast<unsigned>(shift)) & 0xFFU));
    }
    return bytes;
}

TEST(DecoderMessages, comeBackAsTheyWereWholeOrByteByByte) {
    const QByteArray bytes = wholeAnswer();
    for (const qsizetype pieceSize : {bytes.size(), qsizetype{1}}) {
        SCOPED_TRACE(pieceSize);
        DecoderMessageReader reader(room);
        std::vector<DecoderMessage> messages;
        for (qsizetype begin = 0; begin < bytes.size(); begin += pieceSize) {
            std::ranges::move(messagesIn(reader, bytes.mid(begin, pieceSize)), std::back_inserter(messages));
        }
        ASSERT_EQ(messages.size(), 4U);
        EXPECT_EQ(std::get<DecodedDescription>(messages[0]), someDescription);
        const auto& frame = std::get<DecodedFrame>(messages[1]);
        EXPECT_EQ(frame.image, someImage());
        EXPECT_EQ(frame.delay, 70U);
        EXPECT_EQ(std::get<DecodedRemark>(messages[2]).sentence, QStringLiteral("Größe"));
        EXPECT_EQ(std::get<DecodedEnd>(messages[3]).how, DecodedEnd::How::complete);
        EXPECT_TRUE(reader.hasEnded());
        EXPECT_FALSE(reader.isBroken());
    }
}

TEST(DecoderMessages, endInThreeWays) {
    for (const auto& end :
         {DecodedEnd{DecodedEnd::How::failed, QStringLiteral("Why.")},
          DecodedEnd{DecodedEnd::How::unrecognised, {}}, DecodedEnd{}}) {
        const auto read = onlyEndIn(encodedMessage(end));
        EXPECT_EQ(read.how, end.how);
        EXPECT_EQ(read.sentence, end.sentence);
    }
}

TEST(DecoderMessages, cutTextsThatAreTooLong) {
    const QString text(5000, QChar(0xE9));
    EXPECT_EQ(
        onlyEndIn(encodedMessage(DecodedEnd{DecodedEnd::How::failed, text})).sentence,
        text.left(DecoderLimits::longestText / 2));
}

TEST(DecoderMessages, areRefusedWithoutTheGreeting) {
    EXPECT_TRUE(isRefused("HTTP/1.1 200 OK"));
    EXPECT_TRUE(isRefused("x"));
    EXPECT_TRUE(isRefused(encodedMessage(someDescription)));
    EXPECT_FALSE(isRefused(greeting().left(3)));
}

TEST(DecoderMessages, areRefusedWhenTheirKindOrLengthIsWrong) {
    EXPECT_FALSE(isRefused(described()));
    EXPECT_TRUE(isRefused(described() + number(0) + number(0)));
    EXPECT_TRUE(isRefused(described() + number(7) + number(0)));
    EXPECT_TRUE(isRefused(described() + number(4) + number(1))) << "refused before the byte comes";
    EXPECT_TRUE(isRefused(described() + number(3) + number(DecoderLimits::longestText + 1)));
    EXPECT_TRUE(isRefused(described() + number(2) + number(12)));
    EXPECT_TRUE(isRefused(described() + number(2) + number(12 + 4 * 100 * 100 + 4)));
    EXPECT_TRUE(isRefused(described() + number(2) + number(0xFFFF'FFFF)));
    EXPECT_TRUE(isRefused(greeting() + number(1) + number(23)));
}

TEST(DecoderMessages, areRefusedWhenAFrameIsNotWhatItSays) {
    const auto frame = [&](std::uint32_t width, std::uint32_t height, qsizetype pixelBytes) {
        return described() + number(2) + number(static_cast<std::uint32_t>(12 + pixelBytes)) + number(width)
               + number(height) + number(0) + QByteArray(pixelBytes, 'x');
    };
    EXPECT_FALSE(isRefused(frame(2, 1, 8)));
    EXPECT_TRUE(isRefused(frame(2, 2, 8)));
    EXPECT_TRUE(isRefused(frame(1, 1, 8)));
    EXPECT_TRUE(isRefused(frame(0, 5, 8)));
    EXPECT_TRUE(isRefused(frame(200, 1, 800))) << "wider than asked for";
    EXPECT_TRUE(isRefused(frame(0x8000'0001, 2, 8))) << "the product does not wrap around";
    EXPECT_TRUE(isRefused(greeting() + encodedMessage(DecodedFrame{someImage(), 0}))) << "not described";
}

TEST(DecoderMessages, areRefusedWhenTheDescriptionMakesNoSense) {
    const auto isRefusedWith = [](auto DecodedDescription::* member, auto value) {
        auto wrong = someDescription;
        wrong.*member = value;
        return isRefused(greeting() + encodedMessage(wrong));
    };
    EXPECT_TRUE(isRefusedWith(&DecodedDescription::page, 2U));
    EXPECT_TRUE(isRefusedWith(&DecodedDescription::pages, 0U));
    EXPECT_TRUE(isRefusedWith(&DecodedDescription::width, 0xFFFF'FFFFU));
    EXPECT_TRUE(isRefusedWith(&DecodedDescription::contents, static_cast<DecodedDescription::Contents>(9)));
    EXPECT_TRUE(isRefused(described() + encodedMessage(someDescription))) << "described twice";
}

TEST(DecoderMessages, areRefusedBehindTheEnd) {
    EXPECT_TRUE(isRefused(wholeAnswer() + "x"));
    DecoderMessageReader reader(room);
    EXPECT_EQ(messagesIn(reader, wholeAnswer()).size(), 4U);
    reader.add("x");
    EXPECT_TRUE(reader.isBroken());
    EXPECT_FALSE(reader.next());
}

TEST(DecoderMessages, areRefusedWhenFramesComeWithoutEnd) {
    DecoderMessageReader reader(room);
    reader.add(described());
    const QByteArray frame = encodedMessage(DecodedFrame{someImage({1, 1}), 0});
    std::uint32_t frames = 0;
    while (!reader.isBroken() && frames <= DecoderLimits::mostFrames) {
        reader.add(frame);
        for (const auto& message : messagesIn(reader)) {
            frames += std::holds_alternative<DecodedFrame>(message) ? 1U : 0U;
        }
    }
    EXPECT_EQ(frames, DecoderLimits::mostFrames);
    EXPECT_TRUE(reader.isBroken());
}

TEST(DecoderMessages, areRefusedWhenAllFramesTogetherAreTooLarge) {
    constexpr QSize large(4096, 4096);
    DecoderMessageReader reader(large);
    reader.add(described());
    const QByteArray frame = encodedMessage(DecodedFrame{someImage(large), 0});
    EXPECT_EQ(messagesIn(reader, frame).size(), 2U);
    EXPECT_EQ(messagesIn(reader, frame).size(), 0U);
    EXPECT_TRUE(reader.isBroken());
}

} // namespace
} // namespace tolvane::platform
