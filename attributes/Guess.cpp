#include "attributes/Guess.h"

#include "attributes/Decoders.h"
#include "attributes/Inflate.h"
#include "attributes/Parsing.h"
#include "attributes/PropertyListFields.h"
#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/values/ByteCursor.h"
#include "platform/values/HiddenCharacters.h"
#include "platform/values/Utf8.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;
using platform::Date;

bool isRecent(const Date& date) {
    constexpr std::int64_t from1990 = 631'152'000;
    constexpr std::int64_t to2100 = 4'102'444'800;
    return date.hasCalendarDate() && date.unixSeconds() >= from1990 && date.unixSeconds() < to2100;
}

/// A date of a Mac. Small numbers of any kind read as doubles near zero, which would be New Year 2001.
Date macDate(std::uint64_t bits) {
    constexpr double fewestSeconds = 1e6;
    const auto seconds = std::bit_cast<double>(bits);
    return Date(std::abs(seconds) >= fewestSeconds ? seconds : std::numeric_limits<double>::infinity());
}

/// Text without characters that are not shown, but for line ends and tabs.
bool isPlainText(std::string_view bytes) {
    if (!platform::isValidUtf8(bytes)) {
        return false;
    }
    while (!bytes.empty()) {
        const platform::DecodedCharacter character = platform::decodeFirstCharacter(bytes);
        const char32_t c = character.codePoint;
        if ((c < 0x20 || (c >= 0x7F && c < 0xA0)) && c != '\n' && c != '\t' && c != '\r') {
            return false;
        }
        bytes.remove_prefix(character.length);
    }
    return true;
}

/// UTF-16 by its mark, or since every other byte is zero; nothing if it is not that.
std::optional<std::string> wideText(std::span<const std::byte> bytes) {
    if (bytes.size() < 4 || bytes.size() % 2 != 0) {
        return std::nullopt;
    }
    const std::string_view text = textOf(bytes);
    const bool hasBigMark = text.starts_with("\xFE\xFF");
    if (hasBigMark || text.starts_with("\xFF\xFE")) {
        return textOfUtf16(bytes.subspan(2), hasBigMark);
    }
    const auto everyOther = [&](std::size_t first, bool isZero) {
        for (std::size_t i = first; i < bytes.size(); i += 2) {
            if ((bytes[i] == std::byte{0}) != isZero) {
                return false;
            }
        }
        return true;
    };
    for (const std::size_t zeros : {std::size_t{1}, std::size_t{0}}) {
        if (everyOther(zeros, true) && everyOther(1 - zeros, false)) {
            return textOfUtf16(bytes, zeros == 0);
        }
    }
    return std::nullopt;
}

bool guessSixteen(std::span<const std::byte> bytes, Answer& answer) {
    ByteCursor cursor(bytes);
    const auto seconds = static_cast<std::int64_t>(cursor.u64le());
    const std::uint64_t nanoseconds = cursor.u64le();
    if (nanoseconds < 1'000'000'000) {
        const Date date = Date::fromUnixTime(seconds, static_cast<std::uint32_t>(nanoseconds));
        if (isRecent(date)) {
            answer.date("As a date", date);
            answer.summary("16 bytes that read as a time: seconds since 1970, and nanoseconds.");
            return true;
        }
    }
    const auto version = std::to_integer<unsigned>(bytes[6]) >> 4U;
    const auto variant = std::to_integer<unsigned>(bytes[8]) >> 6U;
    if (version >= 1 && version <= 8 && variant == 2) {
        answer.uuid("As a UUID", bytes);
        answer.summary("16 bytes that read as a UUID.");
        return true;
    }
    answer.summary("16 bytes, as many as an MD5 checksum or a UUID has.");
    return true;
}

bool guessEight(std::span<const std::byte> bytes, Answer& answer) {
    ByteCursor cursor(bytes);
    const std::uint64_t number = cursor.u64le();
    ByteCursor again(bytes);
    const std::uint64_t reversed = again.bigEndian(8);
    struct Reading {
        Date date;
        std::string_view words;
    };
    const auto micro = dateOfMicroseconds(number);
    const std::array<Reading, 5> readings{
        {{windowsDate(number), "a date of Windows"},
         {Date::fromUnixTime(
              static_cast<std::int64_t>(number / 1'000'000'000),
              static_cast<std::uint32_t>(number % 1'000'000'000)),
          "nanoseconds since 1970"},
         {micro, "microseconds since 1970"},
         {macDate(reversed), "a date of a Mac, most significant byte first"},
         {macDate(number), "a date of a Mac"}}};
    for (const Reading& reading : readings) {
        if (isRecent(reading.date)) {
            answer.date("As a date", reading.date);
            answer.summary("8 bytes that read as " + std::string(reading.words) + ".");
            return true;
        }
    }
    answer.number("As a number", number);
    answer.summary("8 bytes that may be a number, least significant byte first.");
    return true;
}

bool guessFour(std::span<const std::byte> bytes, Answer& answer) {
    ByteCursor cursor(bytes);
    const std::uint32_t number = cursor.u32le();
    const Date date = Date::fromUnixTime(number, 0);
    if (isRecent(date)) {
        answer.date("As a date", date);
        answer.summary("4 bytes that read as seconds since 1970.");
        return true;
    }
    answer.number("As a number", number);
    answer.summary("4 bytes that may be a number, least significant byte first.");
    return true;
}

void guessByLength(std::span<const std::byte> bytes, Answer& answer) {
    static constexpr std::array<Named, 5> digestSizes{
        {{20, "SHA-1"}, {28, "SHA-224"}, {32, "SHA-256"}, {48, "SHA-384"}, {64, "SHA-512"}}};
    const std::size_t size = bytes.size();
    bool isGuessed = false;
    if (size == 16) {
        isGuessed = guessSixteen(bytes, answer);
    } else if (size == 8) {
        isGuessed = guessEight(bytes, answer);
    } else if (size == 4) {
        isGuessed = guessFour(bytes, answer);
    } else if (const std::string_view digest = nameIn(digestSizes, size); !digest.empty()) {
        answer.summary(
            std::to_string(size) + " bytes, as many as a checksum of the kind " + std::string(digest)
            + " has.");
        isGuessed = true;
    }
    if (!isGuessed) {
        answer.summary("Bytes of no form that is known here.");
    }
    answer.bytes("Bytes", bytes);
}

/// Values with a form of their own that says what they are; whether there was one.
bool guessByBeginning(const Subject& subject, Answer& answer) {
    constexpr std::uint32_t doubleMagic = 0x00051607;
    ByteCursor cursor(subject.bytes);
    const std::string_view all = textOf(subject.bytes);
    if (const auto value = propertyListIn(subject.bytes)) {
        answer.title("Property list");
        answer.summary("A property list, the form in which programs of Macs keep values.");
        addPropertyList(*value, {}, subject, answer);
        return true;
    }
    if (isContainer(subject.bytes) && !beginsLikePropertyList(subject.bytes)
        && decodeBookmark(subject, answer)) {
        answer.title("Bookmark");
        return true;
    }
    if (cursor.u32be() == doubleMagic && subject.depth < deepestValue && decodeAppleDouble(subject, answer)) {
        answer.title("AppleDouble file");
        answer.summary("An AppleDouble file: attributes and resource fork of a file on a Mac.");
        return true;
    }
    const bool isZlib =
        all.starts_with("\x78\x01") || all.starts_with("\x78\x9C") || all.starts_with("\x78\xDA");
    if (const auto content =
            isZlib && subject.depth < deepestValue ? inflated(subject.bytes) : std::nullopt) {
        answer.title("Compressed value");
        const Explanation nested = explainWithin(subject, {}, *content);
        answer.number("Inflated size", content->size(), "bytes");
        addNested(answer, "Content", nested);
        answer.summary("A zlib stream of " + std::to_string(content->size()) + " bytes: " + nested.summary);
        return true;
    }
    if (decodeEncryptionContext(subject, answer)) {
        answer.title("Encryption");
        return true;
    }
    if (all.size() > 3 && all[0] == '\x80' && all[1] >= 2 && all[1] <= 5 && all.ends_with('.')) {
        answer.title("Serialised Python object");
        static_cast<void>(decodePickle(subject, answer));
        answer.summary("A serialised Python object; it is not loaded.");
        return true;
    }
    return false;
}

} // namespace

bool isContainer(std::span<const std::byte> bytes) {
    const std::string_view text = textOf(bytes);
    return beginsLikePropertyList(bytes) || text.starts_with("book") || text.starts_with("alis");
}

Outcome decodeBookmark(const Subject& subject, Answer& answer) {
    const auto structure = platform::readBookmark(subject.bytes);
    if (!structure) {
        return misfit(structure.error().offset, std::string(structure.error().expected));
    }
    const platform::BookmarkContents contents = platform::bookmarkContents(*structure);
    std::string path;
    for (const std::string& component : contents.pathComponents.value_or(std::vector<std::string>())) {
        path += "/" + component;
    }
    path = contents.pathComponents && path.empty() ? "/" : path;
    if (!path.empty()) {
        answer.text("Path", path);
    }
    const auto addText = [&](std::string_view name, const std::optional<std::string>& text) {
        if (text) {
            answer.text(name, *text);
        }
    };
    addText("Volume", contents.volume.name);
    addText("Volume path", contents.volume.path);
    addText("Volume UUID", contents.volume.uuid);
    addText("User", contents.userName);
    if (contents.creationDate) {
        answer.date("Item created", *contents.creationDate);
    }
    answer.summary(
        "A bookmark, which finds a file again" + (path.empty() ? std::string() : ": of " + shortened(path))
        + ".");
    return {};
}

Outcome decodeAnyForm(const Subject& subject, Answer& answer) {
    const std::string_view text = textWithoutNul(subject.bytes);
    if (const auto value = propertyListIn(subject.bytes)) {
        addPropertyList(*value, subject.label, subject, answer);
    } else if (isPlainText(text)) {
        answer.text(subject.label, text);
    } else {
        answer.bytes(subject.label, subject.bytes);
    }
    return {};
}

void explainByGuess(const Subject& subject, Answer& answer) {
    answer.title("Unknown attribute");
    answer.certainty(Certainty::guess);
    if (subject.bytes.empty()) {
        answer.title("Marker");
        answer.summary("A marker without a value.");
        return;
    }
    if (guessByBeginning(subject, answer)) {
        return;
    }
    const std::string_view text = textWithoutNul(subject.bytes);
    const bool isFourBytes = subject.bytes.size() == 4;
    if (isPlainText(text)) {
        const std::string sentence = addTextGuess(text, answer);
        answer.summary(isFourBytes && sentence == "Text." ? "Four characters: a text, or a code." : sentence);
        return;
    }
    if (const auto wide = wideText(subject.bytes); wide && isPlainText(*wide)) {
        answer.text("Text", *wide);
        answer.summary("Text in UTF-16.");
        return;
    }
    guessByLength(subject.bytes, answer);
}

} // namespace tolvane::attributes
