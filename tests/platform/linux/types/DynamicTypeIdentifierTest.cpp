#include "platform/linux/types/DynamicTypeIdentifier.h"

#include <gtest/gtest.h>

#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform {
namespace {

using namespace std::string_view_literals;

struct Example {
    std::string identifier;
    std::string text;
    std::string conformanceCode;
    std::string tagClassCode;
    std::string tag;
};

std::vector<Example> measuredExamples() {
    std::ifstream file(TOLVANE_SOURCE_DIR "/tests/data/uti-dynamic-examples.tsv");
    std::vector<Example> examples;
    std::string line;
    std::getline(file, line);
    EXPECT_EQ(line, "identifier\tdecoded\tconforms-code\ttag-class-code\ttag");
    while (std::getline(file, line)) {
        Example& example = examples.emplace_back();
        std::istringstream cells(line);
        for (auto* cell :
             {&example.identifier, &example.text, &example.conformanceCode, &example.tagClassCode,
              &example.tag}) {
            std::getline(cells, *cell, '\t');
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
    for (const auto& example : examples) {
        EXPECT_EQ(decodeDynamicText(example.identifier), example.text);
        EXPECT_EQ(encodeDynamicText(example.text), example.identifier);
        const auto type = DynamicTypeIdentifier::decode(example.identifier);
        ASSERT_TRUE(type.has_value()) << example.identifier;
        EXPECT_EQ(type->tag, example.tag);
        // The code 13 has no known meaning: it is read but never written.
        if (example.conformanceCode == "13") {
            EXPECT_EQ(type->conformances, std::vector<std::string>{"13"});
            EXPECT_EQ(type->encode(), std::nullopt);
        } else {
            EXPECT_EQ(type->encode(), example.identifier);
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
    const std::vector<std::pair<std::string, std::string>> types{
        {"6", "public.data"},
        {"7", "public.text"},
        {"8", "public.plain-text"},
        {"9", "public.utf16-plain-text"},
        {"A", "com.apple.traditional-mac-plain-text"},
        {"B", "public.image"},
        {"C", "public.video"},
        {"D", "public.audio"},
        {"E", "public.directory"},
        {"F", "public.folder"}};
    for (const auto& [code, name] : types) {
        const auto identifier = encoded("?0=" + code + ":1=x");
        EXPECT_EQ(DynamicTypeIdentifier::decode(identifier), extensionOf(name, "x"));
        EXPECT_EQ(extensionOf(name, "x").encode(), identifier);
    }
    const std::vector<std::pair<std::string, std::string>> tagClasses{
        {"1", "public.filename-extension"}, {"2", "com.apple.ostype"},  {"3", "public.mime-type"},
        {"4", "com.apple.nspboard-type"},   {"5", "public.url-scheme"},
    };
    for (const auto& [code, name] : tagClasses) {
        const auto identifier = encoded(code + "=x");
        EXPECT_EQ(DynamicTypeIdentifier::decode(identifier), bareTag(name, "x"));
        EXPECT_EQ(bareTag(name, "x").encode(), identifier);
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

TEST(DynamicTypeIdentifier, allowsAnEmptyTag) {
    EXPECT_EQ(bareTag(filenameExtensionTagClass, "").encode(), "dyn.age8u");
    EXPECT_EQ(DynamicTypeIdentifier::decode("dyn.age8u"), bareTag(filenameExtensionTagClass, ""));
}

TEST(DynamicTypeIdentifier, refusesTagsThatCannotBeWritten) {
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

TEST(DynamicTypeIdentifier, isOpaqueWhenItHasAStrangeCharacter) {
    for (const auto identifier : {"", "dyn", "dyn.", "public.data", "dyn.bge80835h", "xdyn.age80835h"}) {
        EXPECT_EQ(decodeDynamicText(identifier), std::nullopt) << identifier;
    }
    for (const auto strange : "ijlo.-_ \t\0"sv) {
        EXPECT_EQ(decodeDynamicText("dyn.age80835" + std::string(1, strange)), std::nullopt) << strange;
    }
    EXPECT_EQ(decodeDynamicText("dyn.age80835é"), std::nullopt);
}

TEST(DynamicTypeIdentifier, isOpaqueWhenFiveOrMoreBitsAreLeftOverOrOneOfThemIsSet) {
    const auto identifier = encoded("12345");
    ASSERT_EQ(decodeDynamicText(identifier), "12345");
    for (const auto* more : {"a", "aaa", "aaaaaa"}) {
        EXPECT_EQ(decodeDynamicText(identifier + more), std::nullopt) << more;
    }
    EXPECT_EQ(decodeDynamicText("dyn.age8v"), std::nullopt) << "as dyn.age8u, but for one bit";
}

TEST(DynamicTypeIdentifier, isOpaqueWhenItsBytesAreNotUtf8) {
    EXPECT_EQ(decodeDynamicText("dyn.a2qya"), std::nullopt); // C3 28: a lead byte without what it announces
    EXPECT_EQ(decodeDynamicText("dyn.a96"), std::nullopt);   // FF
    EXPECT_EQ(decodeDynamicText("dyn.a2s2a"), "\u00F0");     // C3 B0, nearly the same
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
