#include "platform/linux/types/DynamicTypeIdentifier.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

// An identifier, its text, the codes of its conformance and its tag class, and its tag.
using Example = std::array<std::string, 5>;

std::vector<Example> measuredExamples() {
    std::ifstream file(TOLVANE_SOURCE_DIR "/tests/data/uti-dynamic-examples.tsv");
    std::string line;
    std::getline(file, line);
    EXPECT_EQ(line, "identifier\tdecoded\tconforms-code\ttag-class-code\ttag");
    std::vector<Example> examples;
    while (std::getline(file, line)) {
        std::istringstream cells(line);
        for (std::string& cell : examples.emplace_back()) {
            std::getline(cells, cell, '\t');
        }
    }
    return examples;
}

DynamicTypeIdentifier extensionOf(std::string conformance, std::string extension) {
    return {{std::move(conformance)}, std::string(filenameExtensionTagClass), std::move(extension)};
}

DynamicTypeIdentifier bareTag(std::string_view tagClass, std::string tag) {
    return {{}, std::string(tagClass), std::move(tag)};
}

std::string encoded(std::string_view text) {
    return encodeDynamicText(text).value_or("not encoded");
}

TEST(DynamicTypeIdentifier, survivesReadingAndWritingOfEveryMeasuredIdentifier) {
    const auto examples = measuredExamples();
    EXPECT_EQ(examples.size(), 84);
    for (const auto& [identifier, text, conformanceCode, tagClassCode, tag] : examples) {
        EXPECT_EQ(decodeDynamicText(identifier), text);
        EXPECT_EQ(encodeDynamicText(text), identifier);
        const auto type = DynamicTypeIdentifier::decode(identifier);
        ASSERT_TRUE(type.has_value()) << identifier;
        EXPECT_EQ(type->tag, tag);
        // The code 13 has no known meaning: it is read but never written.
        if (conformanceCode == "13") {
            EXPECT_EQ(type->conformances, std::vector<std::string>{"13"});
            EXPECT_EQ(type->encode(), std::nullopt);
        } else {
            EXPECT_EQ(type->encode(), identifier);
        }
    }
}

TEST(DynamicTypeIdentifier, writesWhatSystemsWereSeenToWriteBesides) {
    const std::vector<std::pair<std::string, std::string>> measured{
        {"rs", "dyn.ah62d4rv4ge81e62"},
        {"lua", "dyn.ah62d4rv4ge8027pb"},
        {"conf", "dyn.ah62d4rv4ge80g55sq2"},
        {"ipynb", "dyn.ah62d4rv4ge80w6d3r3va"},
        {"code-workspace", "dyn.ah62d4rv4ge80g55eqy01s55wrr31a2pdqy"}};
    for (const auto& [extension, identifier] : measured) {
        EXPECT_EQ(extensionOf("public.data", extension).encode(), identifier);
    }
    EXPECT_EQ(bareTag(filenameExtensionTagClass, "rs").encode(), "dyn.age81e62");
    EXPECT_EQ(bareTag(fourCharacterCodeTagClass, "itun").encode(), "dyn.agk80w7dzr2");
}

TEST(DynamicTypeIdentifier, readsWellKnownCodesAsTheirNames) {
    const std::vector<std::pair<std::string, DynamicTypeIdentifier>> types{
        {"?0=6:1", extensionOf("public.data", "x")},
        {"?0=7:1", extensionOf("public.text", "x")},
        {"?0=8:1", extensionOf("public.plain-text", "x")},
        {"?0=9:1", extensionOf("public.utf16-plain-text", "x")},
        {"?0=A:1", extensionOf("com.apple.traditional-mac-plain-text", "x")},
        {"?0=B:1", extensionOf("public.image", "x")},
        {"?0=C:1", extensionOf("public.video", "x")},
        {"?0=D:1", extensionOf("public.audio", "x")},
        {"?0=E:1", extensionOf("public.directory", "x")},
        {"?0=F:1", extensionOf("public.folder", "x")},
        {"1", bareTag("public.filename-extension", "x")},
        {"2", bareTag("com.apple.ostype", "x")},
        {"3", bareTag("public.mime-type", "x")},
        {"4", bareTag("com.apple.nspboard-type", "x")},
        {"5", bareTag("public.url-scheme", "x")}};
    for (const auto& [codes, type] : types) {
        const auto identifier = encoded(codes + "=x");
        EXPECT_EQ(DynamicTypeIdentifier::decode(identifier), type) << codes;
        EXPECT_EQ(type.encode(), identifier) << codes;
    }
}

TEST(DynamicTypeIdentifier, keepsCodesInTheWrongPlaceAsTheyStand) {
    const auto type = DynamicTypeIdentifier::decode(encoded("?0=1:6=x"));
    ASSERT_TRUE(type.has_value());
    EXPECT_EQ(type->conformances, std::vector<std::string>{"1"});
    EXPECT_EQ(type->tagClass, "6");
    EXPECT_EQ(type->encode(), std::nullopt);
}

TEST(DynamicTypeIdentifier, writesNamesWithoutCodeInFullAndSeparatesThemByCommas) {
    const auto type = extensionOf("com.apple.package", "foo");
    EXPECT_EQ(decodeDynamicText(type.encode().value_or("")), "?0=com.apple.package:1=foo");
    EXPECT_EQ(DynamicTypeIdentifier::decode(type.encode().value_or("")), type);
    EXPECT_EQ(decodeDynamicText(bareTag("example.class", "Foo").encode().value_or("")), "example.class=Foo");
    const DynamicTypeIdentifier two{
        {"public.data", "com.apple.package"}, std::string(filenameExtensionTagClass), "x"};
    EXPECT_EQ(two.encode(), encoded("?0=6,com.apple.package:1=x"));
    EXPECT_EQ(DynamicTypeIdentifier::decode(two.encode().value_or("")), two);
}

TEST(DynamicTypeIdentifier, takesNamesInAnyCaseAndAsCodes) {
    EXPECT_EQ(extensionOf("PUBLIC.Data", "go").encode(), "dyn.ah62d4rv4ge80s52");
    EXPECT_EQ((DynamicTypeIdentifier{{"6"}, "1", "go"}).encode(), "dyn.ah62d4rv4ge80s52");
    EXPECT_EQ(decodeDynamicText("DYN.AH62D4RV4GE80S52"), "?0=6:1=go");
}

TEST(DynamicTypeIdentifier, writesExtensionsInLowerCaseAndOtherTagsAsTheyAre) {
    EXPECT_EQ(
        bareTag(filenameExtensionTagClass, "pluginPayloadAttachment").encode(),
        "dyn.age81a5dzq7y066dbtf0g82peqf4hk2pdrb00n5xy");
    EXPECT_EQ(extensionOf("public.data", "ÄRGER").encode(), encoded("?0=6:1=ärger"));
    const DynamicTypeIdentifier code{{"public.data"}, std::string(fourCharacterCodeTagClass), "XMSS"};
    EXPECT_EQ(code.encode(), encoded("?0=6:2=XMSS"));
    const DynamicTypeIdentifier pasteboard{
        {"public.data"}, std::string(pasteboardTagClass), "Apple URL pasteboard type"};
    EXPECT_EQ(pasteboard.encode(), encoded("?0=6:4=Apple URL pasteboard type"));
}

TEST(DynamicTypeIdentifier, allowsAnEmptyTagAndNoneThatCannotBeWritten) {
    EXPECT_EQ(bareTag(filenameExtensionTagClass, "").encode(), "dyn.age8u");
    EXPECT_EQ(DynamicTypeIdentifier::decode("dyn.age8u"), bareTag(filenameExtensionTagClass, ""));
    for (const std::string tag : {"a,b", "a:b", "a=b", "a\\b", ",", "a\xFF", "\xC3"}) {
        EXPECT_EQ(extensionOf("public.data", tag).encode(), std::nullopt) << tag;
        EXPECT_EQ(bareTag(pasteboardTagClass, tag).encode(), std::nullopt) << tag;
    }
    EXPECT_NE(extensionOf("public.data", "a?b c").encode(), std::nullopt);
}

TEST(DynamicTypeIdentifier, refusesNamesThatWouldReadAsSomethingElse) {
    for (const std::string name : {"", "13", "0", "a,b", "a:b", "a=b", "a\\b", "?a", "a\xFF"}) {
        EXPECT_EQ(extensionOf(name, "x").encode(), std::nullopt) << name;
        EXPECT_EQ(bareTag(name, "x").encode(), std::nullopt) << name;
    }
}

TEST(DynamicTypeIdentifier, isOpaqueWithAStrangeCharacterOrBitsLeftOverOrBytesThatAreNotUtf8) {
    EXPECT_EQ(decodeDynamicText("dyn.age80835h"), "1=ogg");
    const auto five = encoded("12345");
    for (const std::string& identifier :
         {std::string(), "dyn"s, "dyn."s, "public.data"s, "dyn.bge80835h"s, "xdyn.age80835h"s,
          "dyn.age80835é"s,
          // Five bits or more are left over.
          five + "a", five + "aaa", five + "aaaaaa",
          // As "dyn.age8u", but for one of the bits that are left over.
          "dyn.age8v"s,
          // C3 28, a lead byte without what it announces, and FF.
          "dyn.a2qya"s, "dyn.a96"s}) {
        EXPECT_EQ(decodeDynamicText(identifier), std::nullopt) << identifier;
    }
    for (const auto strange : "ijlo.-_ \t\0"sv) {
        EXPECT_EQ(decodeDynamicText("dyn.age80835" + std::string(1, strange)), std::nullopt) << strange;
    }
    EXPECT_EQ(decodeDynamicText(five), "12345");
    EXPECT_EQ(decodeDynamicText("dyn.a2s2a"), "\u00F0") << "C3 B0, nearly the same as C3 28";
    EXPECT_EQ(encodeDynamicText("\xC3\x28"), std::nullopt);
}

TEST(DynamicTypeIdentifier, carriesAnyTextThere) {
    for (const auto text :
         {""sv, "a"sv, "ab"sv, "abc"sv, "abcd"sv, "abcde"sv, "\0x"sv, "ü 日本 \U0001F600"sv}) {
        EXPECT_EQ(decodeDynamicText(encoded(text)), text);
    }
}

TEST(DynamicTypeIdentifier, isNotParsedWhenItsTextHasAnotherForm) {
    for (const auto text : {"",       "1",       "x",         "=x",        "?0=6",         "?0=6:",
                            "?0=6:1", "?0=:1=x", "?0=6,:1=x", "?0=,6:1=x", "?1=6:1=x",     "?6:1=x",
                            "1=a=b",  "1=a,b",   "1=a:b",     "1=a\\b",    "?0=6:1=a:3=b", "?0=a=b:1=x",
                            "1:1=x",  "a?b=x"}) {
        EXPECT_EQ(decodeDynamicText(encoded(text)), text);
        EXPECT_EQ(DynamicTypeIdentifier::decode(encoded(text)), std::nullopt) << text;
    }
    EXPECT_EQ(DynamicTypeIdentifier::decode("public.data"), std::nullopt);
}

} // namespace
} // namespace tolvane::platform
