// The lists in tests/data/property-lists: some of every form, those beginning with "bad-" named for their
// fault. The fuzz targets start from them.
#include "platform/values/Utf8.h"
#include "tests/platform/propertylist/Reading.h"
#include "tests/support/PropertyListWriters.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <set>

namespace tolvane::platform {
namespace {

using namespace tests;

const std::filesystem::path listFolder = TOLVANE_SOURCE_DIR "/tests/data/property-lists";

std::string listFile(std::string_view name) {
    return contentsOfFile(listFolder / name);
}

std::set<std::string> listNames() {
    std::set<std::string> names;
    for (const auto& file : std::filesystem::directory_iterator(listFolder)) {
        names.insert(file.path().filename().string());
    }
    return names;
}

Value keyedIdentifier(std::int64_t number) {
    return Dictionary{{"CF$UID", number}};
}

Data dataOf(std::initializer_list<int> values) {
    Data data;
    for (const int value : values) {
        data.push_back(static_cast<std::byte>(value));
    }
    return data;
}

Array everyBinaryKind() {
    const std::string wide = "ü€😀";
    return {
        Null{},
        false,
        true,
        std::int64_t{255},
        std::int64_t{65'534},
        std::int64_t{4'294'967'295},
        std::int64_t{-1},
        std::numeric_limits<std::uint64_t>::max(),
        std::numeric_limits<std::int64_t>::min(),
        1.5,
        -0.25,
        Date(700'000'000.5),
        dataOf({0, 1, 255}),
        "plain",
        wide,
        keyedIdentifier(7),
        keyedIdentifier(4'294'967'295),
        Array{true, "plain"},
        Array{"plain", true},
        Dictionary{{"plain", Array{true, "plain"}}, {wide, Array{"plain", true}}},
        Array{},
        Dictionary{}};
}

Dictionary everyXMLKind() {
    return {
        {"array", Array{"a", Array{}, Dictionary{}}},
        {"data", dataOf({0, 1, 2, 255})},
        {"date", Date::fromUnixTime(1'723'228'022, 0)},
        {"empty", ""},
        {"false", false},
        {"hexadecimal", std::int64_t{-16}},
        {"identifier", keyedIdentifier(7)},
        {"integer", std::int64_t{-5}},
        {"largest", std::numeric_limits<std::uint64_t>::max()},
        {"real", 1500.0},
        {"text", "ü & <b> € <c>"},
        {"true", true}};
}

struct ReadableList {
    std::string_view file;
    PropertyListForm form;
    Value value;
};

std::vector<ReadableList> readableLists() {
    using enum PropertyListForm;
    return {
        {"every-kind.binary", binary, everyBinaryKind()},
        {"keyed-archive.binary", binary,
         Dictionary{
             {"$objects",
              Array{
                  "$null", Dictionary{{"next", keyedIdentifier(1)}},
                  Dictionary{{"next", keyedIdentifier(2)}}}},
             {"$top", Dictionary{{"root", keyedIdentifier(1)}}}}},
        {"long-counts.binary", binary, Array{"abc", dataOf({1, 2})}},
        {"lone-surrogates.binary", binary, Array{"\uFFFD", "a\uFFFDb", "\uFFFD😀"}},
        {"nul-in-key.binary", binary, Dictionary{{std::string("a\0ü", 4), "x"}}},
        {"repeated-key.binary", binary, Dictionary{{"a", true}}},
        {"shared-and-fill.binary", binary,
         Array{"twice", "twice", Array{"twice", "twice"}, Array{"twice", "twice"}}},
        {"wide-numbers.binary", binary, Array{"a", "a"}},
        {"every-kind.xml", xml, everyXMLKind()},
        {"no-plist-element.xml", xml, Array{"a", std::numeric_limits<double>::infinity()}},
        {"utf-16.xml", xml, "ü€😀"},
        {"latin-1.xml", xml, "ü"},
        {"byte-order-mark.xml", xml, true},
        {"strings.text", text,
         Dictionary{{"greeting", "Hello, \"you\"\n"}, {"plain.key", "/usr/bin"}, {"number", "€ 😀 Æ A"}}},
        {"nested.text", text,
         Dictionary{
             {"list", Array{"a", "b c", dataOf({0x0F, 0xBD, 0x77, 0x1C, 0x2E}), Array{}, Dictionary{}}},
             {"owner", Dictionary{{"name", "$user-1"}}}}},
        {"data.text", text, dataOf({0x0F, 0xBD, 0x77, 0x1C})}};
}

struct UnreadableList {
    std::string_view file;
    std::size_t offset;
    std::string_view expected;
};

constexpr UnreadableList unreadableLists[] = {
    {"bad-513-levels.binary", 1544, "containers at most 512 deep"},
    {"bad-array-past-end.binary", 8, "an object that ends before the offset table"},
    {"bad-circle-of-keys.binary", 9, "an object that does not contain itself"},
    {"bad-circle.binary", 16, "an object that does not contain itself"},
    {"bad-count-huge.binary", 8, "an object that ends before the offset table"},
    {"bad-count-marker.binary", 9, "a count of 1, 2, 4 or 8 bytes"},
    {"bad-count-of-16-bytes.binary", 9, "a count of 1, 2, 4 or 8 bytes"},
    {"bad-count-of-objects-huge.binary", 19, "no more objects than the offset table has room for"},
    {"bad-count-past-end.binary", 8, "an object that ends before the offset table"},
    {"bad-data-past-end.binary", 8, "an object that ends before the offset table"},
    {"bad-date-of-4-bytes.binary", 8, "a date of 8 bytes"},
    {"bad-date-past-end.binary", 8, "an object that ends before the offset table"},
    {"bad-dictionary-past-end.binary", 8, "an object that ends before the offset table"},
    {"bad-entities-that-multiply.xml", 28, "a document type without entities"},
    {"bad-entity-of-document-type.xml", 49, "an entity that XML itself declares"},
    {"bad-fill-as-object.binary", 10, "an object, not fill"},
    {"bad-fraction-of-2-bytes.binary", 8, "a fraction of 4 or 8 bytes"},
    {"bad-fraction-past-end.binary", 8, "an object that ends before the offset table"},
    {"bad-header.binary", 0, R"(the letters "bplist00")"},
    {"bad-holds-itself.binary", 10, "an object that does not contain itself"},
    {"bad-identifier-of-33-bits.binary", 8, "an identifier of 32 bits"},
    {"bad-identifier-past-end.binary", 8, "an object that ends before the offset table"},
    {"bad-kind-11.binary", 8, "the marker of an object"},
    {"bad-kind-15.binary", 8, "the marker of an object"},
    {"bad-kind-7.binary", 8, "the marker of an object"},
    {"bad-kind-9.binary", 8, "the marker of an object"},
    {"bad-long-count-past-end.binary", 8, "an object that ends before the offset table"},
    {"bad-long-number-past-end.binary", 8, "an object that ends before the offset table"},
    {"bad-negative-of-65-bits.binary", 8, "a whole number of 64 bits"},
    {"bad-no-object.binary", 24, "the number of an object"},
    {"bad-no-semicolon.text", 8, "';' after an entry"},
    {"bad-not-closed.xml", 32, "well-formed XML (no element found)"},
    {"bad-not-utf-8.text", 3, "text in UTF-8"},
    {"bad-number-as-key.binary", 10, "the number of a text as the key of a dictionary"},
    {"bad-number-of-32-bytes.binary", 8, "a whole number of 1, 2, 4, 8 or 16 bytes"},
    {"bad-number-of-65-bits.binary", 8, "a whole number of 64 bits"},
    {"bad-number-past-end.binary", 8, "an object that ends before the offset table"},
    {"bad-number-width-0.binary", 18, "a width of object numbers from 1 to 8"},
    {"bad-number-width-9.binary", 18, "a width of object numbers from 1 to 8"},
    {"bad-object-number.binary", 10, "the number of an object"},
    {"bad-odd-digits.text", 5, "two hexadecimal digits for each byte"},
    {"bad-offset-at-table.binary", 10, "an offset between the header and the offset table"},
    {"bad-offset-in-header.binary", 10, "an offset between the header and the offset table"},
    {"bad-offset-width-0.binary", 17, "a width of offsets from 1 to 8"},
    {"bad-offset-width-9.binary", 17, "a width of offsets from 1 to 8"},
    {"bad-one-word.text", 5, "'=' after a key"},
    {"bad-parameter-entity.xml", 52, "a document type without entities"},
    {"bad-shared-too-often.binary", 85, "objects that are not shared too often to be written out"},
    {"bad-short.binary", 39, "a trailer of 32 bytes"},
    {"bad-table-huge.binary", 35, "an offset table between the header and the trailer"},
    {"bad-table-in-header.binary", 35, "an offset table between the header and the trailer"},
    {"bad-table-past-end.binary", 35, "an offset table between the header and the trailer"},
    {"bad-text-not-ascii.binary", 10, "a character of ASCII"},
    {"bad-text-past-end.binary", 8, "an object that ends before the offset table"},
    {"bad-too-many-objects.binary", 19, "no more objects than the offset table has room for"},
    {"bad-top-object.binary", 27, "the number of an object"},
    {"bad-unclosed-text.text", 2, "a text whose quotes are closed"},
    {"bad-unused-offset.binary", 13, "an offset between the header and the offset table"},
    {"bad-url.binary", 8, "the marker of an object"},
    {"bad-value-without-key.xml", 13, "a key"},
    {"bad-wide-text-past-end.binary", 8, "an object that ends before the offset table"}};

TEST(PropertyListCorpus, isReadAndReadsTheSameWrittenInEachForm) {
    for (const auto& [file, form, value] : readableLists()) {
        EXPECT_EQ(listValue(listFile(file), form), value) << file;
        EXPECT_EQ(listValue(binaryPropertyList(value).value(), PropertyListForm::binary), value) << file;
        if (form == PropertyListForm::text) {
            EXPECT_EQ(listValue(textPropertyList(value).value(), form), value) << file;
        }
        if (form != PropertyListForm::binary) {
            EXPECT_EQ(listValue(xmlPropertyList(value).value()), value) << file;
        }
    }
}

TEST(PropertyListCorpus, isRefusedForItsFault) {
    for (const auto& [file, offset, expected] : unreadableLists) {
        EXPECT_EQ(listFault(listFile(file)), (PropertyListFault{offset, std::string(expected)})) << file;
    }
}

TEST(PropertyListCorpus, holdsNoFileThatIsNotListed) {
    std::set<std::string> listed;
    for (const ReadableList& entry : readableLists()) {
        listed.emplace(entry.file);
    }
    for (const UnreadableList& entry : unreadableLists) {
        listed.emplace(entry.file);
    }
    EXPECT_EQ(listNames(), listed);
}

// Every list cut off after every byte, and with every byte changed in several ways, is a list that can be
// written and read again, or has a fault within the bytes.

template <typename Change>
void forEachList(const Change& change) {
    std::size_t lists = 0;
    for (const std::string& name : listNames()) {
        const std::string bytes = listFile(name);
        constexpr std::size_t longest = 2000;
        // Most changes of this one give lists that are as large as a list may be: each would take a second.
        if (bytes.size() <= longest && name != "bad-shared-too-often.binary") {
            SCOPED_TRACE(name);
            change(bytes);
            ++lists;
        }
    }
    EXPECT_GT(lists, 50U);
}

void expectListOrFault(const std::string& bytes) {
    const auto list = readList(bytes);
    if (!list) {
        EXPECT_LE(list.error().offset, bytes.size());
        EXPECT_FALSE(list.error().expected.empty());
        return;
    }
    const auto written = binaryPropertyList(list->value);
    ASSERT_TRUE(written);
    EXPECT_EQ(binaryPropertyList(listValue(*written, PropertyListForm::binary)), written);
    EXPECT_TRUE(isValidUtf8(description(list->value)));
}

TEST(HostilePropertyLists, areNoneWhereABinaryOneIsCutOff) {
    forEachList([](const std::string& bytes) {
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            const std::string start = bytes.substr(0, length);
            if (start.starts_with("bplist")) {
                EXPECT_LE(listFault(start).offset, length);
            } else {
                expectListOrFault(start);
            }
        }
    });
}

TEST(HostilePropertyLists, areReadOrRefusedWhateverByteIsChanged) {
    forEachList([](const std::string& bytes) {
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            for (const unsigned change : {1U, 2U, 0x10U, 0x20U, 0x80U, 0xFFU}) {
                std::string changed = bytes;
                changed[i] = static_cast<char>(static_cast<unsigned char>(changed[i]) ^ change);
                expectListOrFault(changed);
            }
        }
    });
}

} // namespace
} // namespace tolvane::platform
