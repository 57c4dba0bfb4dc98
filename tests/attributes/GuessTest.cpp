#include "tests/attributes/Explaining.h"
#include "tests/support/BookmarkCorpus.h"

#include <bit>

namespace tolvane::tests {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* unknown = "user.unheard.of";

std::string guess(std::string_view value) {
    const attributes::Explanation explanation = explained(unknown, value);
    EXPECT_EQ(explanation.certainty, attributes::Certainty::guess);
    return explanation.summary;
}

TEST(Guess, ofNothingIsAMarker) {
    EXPECT_EQ(guess(""), "A marker without a value.");
}

TEST(Guess, findsFormsThatSayWhatTheyAre) {
    EXPECT_EQ(
        guess(binaryPropertyList(platform::Value("x")).value()),
        "A property list, the form in which programs of Macs keep values.");
    EXPECT_EQ(guess(zlibStored("hello")), "A zlib stream of 5 bytes: Text.");
    EXPECT_THAT(linesOf(explained(unknown, zlibStored("hello"))), Contains("Content › Text: hello"));
    EXPECT_EQ(guess(bytesOfHex("80027d712e")), "A serialised Python object; it is not loaded.");
}

TEST(Guess, findsABookmarkAndWhereItLeads) {
    const std::string value = corpusText("note.bookmark");
    EXPECT_THAT(guess(value), HasSubstr("A bookmark, which finds a file again: of /"));
}

TEST(Guess, inflatesStreamsInStreamsToADepthOnly) {
    std::string value = "core";
    for (unsigned i = 0; i < 10; ++i) {
        value = zlibStored(value);
    }
    const attributes::Explanation explanation = explained(unknown, value);
    EXPECT_LT(explanation.fields.size(), 20U);
}

TEST(Guess, readsText) {
    EXPECT_EQ(guess("hello"), "Text.");
    EXPECT_EQ(guess("two\nlines"), "Text.");
    EXPECT_EQ(guess("abcd"), "Four characters: a text, or a code.");
    EXPECT_EQ(guess(zeros(1)), "Text without characters.");
    EXPECT_EQ(guess("https://example.org/"), "Text that reads as an address.");
    EXPECT_EQ(guess("/etc/passwd"), "Text that reads as a path.");
    EXPECT_EQ(guess("33555f3d-1cd5-41ce-a2e8-a6fd6657a703"), "Text that reads as a UUID.");
    EXPECT_EQ(guess("{\"a\": 1}"), "Text that reads as JSON.");
    EXPECT_EQ(guess("[a]\nb=c"), "Text that reads as settings in sections.");
    EXPECT_EQ(guess("<a/>"), "Text that reads as XML.");
    EXPECT_EQ(guess("u:r:x_t:s0"), "Text that reads as a security label.");
    EXPECT_EQ(guess("12:30:45"), "Text.");
    EXPECT_EQ(guess(std::string(40, 'a')), "Text: 40 hexadecimal digits, as many as a checksum has.");
}

TEST(Guess, readsNumbersInTextAsDates) {
    for (const char* const value :
         {"1700000000", "1700000000000", "1700000000000000", "1700000000000000000"}) {
        EXPECT_EQ(guess(value), "Text: a number that reads as a time since 1970.");
        EXPECT_THAT(linesOf(explained(unknown, value)), Contains("As a date: 2023-11-14 22:13:20 UTC"));
    }
    EXPECT_EQ(guess("0000000001"), "Text.");
    EXPECT_EQ(guess("170000000"), "Text.");
}

TEST(Guess, readsUtf16) {
    EXPECT_EQ(guess(utf16("hello")), "Text in UTF-16.");
    EXPECT_THAT(linesOf(explained(unknown, "\xFE\xFF" + std::string("\0h\0i", 4))), ElementsAre("Text: hi"));
    EXPECT_THAT(linesOf(explained(unknown, std::string("\0h\0i", 4))), ElementsAre("Text: hi"));
}

TEST(Guess, readsSixteenBytes) {
    EXPECT_EQ(
        guess(little<8>(1'700'000'000, 5)),
        "16 bytes that read as a time: seconds since 1970, and nanoseconds.");
    EXPECT_EQ(guess(bytesOfHex("33555f3d1cd541cea2e8a6fd6657a703")), "16 bytes that read as a UUID.");
    EXPECT_EQ(guess(std::string(16, '\xEE')), "16 bytes, as many as an MD5 checksum or a UUID has.");
}

TEST(Guess, readsEightBytes) {
    EXPECT_EQ(guess(little<8>(windowsTicks(1'700'000'000))), "8 bytes that read as a date of Windows.");
    EXPECT_EQ(guess(little<8>(1'700'000'000'123'456'789)), "8 bytes that read as nanoseconds since 1970.");
    EXPECT_EQ(guess(little<8>(1'700'000'000'123'456)), "8 bytes that read as microseconds since 1970.");
    EXPECT_EQ(
        guess(big<8>(std::bit_cast<std::uint64_t>(700'000'000.25))),
        "8 bytes that read as a date of a Mac, most significant byte first.");
    EXPECT_EQ(
        guess(little<8>(std::bit_cast<std::uint64_t>(700'000'000.25))),
        "8 bytes that read as a date of a Mac.");
    EXPECT_EQ(guess(little<8>(5)), "8 bytes that may be a number, least significant byte first.");
}

TEST(Guess, readsOtherLengths) {
    EXPECT_EQ(guess(little<4>(1'700'000'000)), "4 bytes that read as seconds since 1970.");
    EXPECT_EQ(guess(little<4>(5)), "4 bytes that may be a number, least significant byte first.");
    EXPECT_EQ(guess(std::string(32, '\xEE')), "32 bytes, as many as a checksum of the kind SHA-256 has.");
    EXPECT_EQ(guess(std::string(3, '\xEE')), "Bytes of no form that is known here.");
}

TEST(Guess, ofAKnownNameWithoutAKnownFormIsNone) {
    const attributes::Explanation explanation = explained("com.apple.fileprovider.fpfs#P", "1");
    EXPECT_EQ(explanation.certainty, attributes::Certainty::observed);
    EXPECT_THAT(linesOf(explanation), ElementsAre("Value: 1", "Copying: not exported"));
}

} // namespace
} // namespace tolvane::tests
