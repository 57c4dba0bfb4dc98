#include "platform/qt/network/PropertyListBounds.h"

#include "tests/support/ScriptedSources.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {
namespace {

bool isWithinBounds(std::string_view bytes) {
    return platform::isPropertyListWithinBounds(bytesOf(bytes));
}

std::string bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values) {
        text += static_cast<char>(value);
    }
    return text;
}

std::string bigEndian(std::uint64_t value, int length) {
    std::string text;
    for (int i = length - 1; i >= 0; --i) {
        text += static_cast<char>(value >> static_cast<unsigned>(8 * i) & 0xFFU);
    }
    return text;
}

struct Trailer {
    std::uint64_t offsetSize = 2;
    std::uint64_t referenceSize = 2;
    std::uint64_t objects = 0;
    std::uint64_t root = 0;
    std::uint64_t offsetTable = 0;
};

std::string trailerOf(const Trailer& trailer) {
    return std::string(6, '\0') + bigEndian(trailer.offsetSize, 1) + bigEndian(trailer.referenceSize, 1)
           + bigEndian(trailer.objects, 8) + bigEndian(trailer.root, 8) + bigEndian(trailer.offsetTable, 8);
}

/// A binary list of these objects, the first on top, its numbers of two bytes.
std::string binaryList(const std::vector<std::string>& objects) {
    std::string list = "bplist00";
    std::string offsets;
    for (const std::string& object : objects) {
        offsets += bigEndian(list.size(), 2);
        list += object;
    }
    return list + offsets + trailerOf({.objects = objects.size(), .offsetTable = list.size()});
}

/// An array of references.
std::string arrayOf(const std::vector<std::uint64_t>& references) {
    std::string object = bytes({0xAF, 0x11}) + bigEndian(references.size(), 2);
    for (const std::uint64_t reference : references) {
        object += bigEndian(reference, 2);
    }
    return object;
}

const std::string text = bytes({0x51, 'a'});

TEST(PropertyListBounds, knowTheBinaryFormatByItsFirstBytes) {
    EXPECT_TRUE(platform::isBinaryPropertyList(bytesOf("bplist00")));
    EXPECT_FALSE(platform::isBinaryPropertyList(bytesOf("<plist>")));
    EXPECT_FALSE(platform::isBinaryPropertyList(bytesOf("bplis")));
    EXPECT_FALSE(platform::isBinaryPropertyList({}));
}

TEST(PropertyListBounds, letBinaryListsPassThatNameTextsTwice) {
    EXPECT_TRUE(isWithinBounds(binaryList({text})));
    EXPECT_TRUE(isWithinBounds(binaryList({arrayOf({1, 2, 1}), text, arrayOf({1})})));
    const std::string dictionary = bytes({0xD1, 0, 1, 0, 2});
    EXPECT_TRUE(isWithinBounds(binaryList({dictionary, text, arrayOf({})})));
}

TEST(PropertyListBounds, refuseCircles) {
    EXPECT_FALSE(isWithinBounds(binaryList({arrayOf({0})})));
    EXPECT_FALSE(isWithinBounds(binaryList({arrayOf({1}), arrayOf({2}), arrayOf({1})})));
}

TEST(PropertyListBounds, refuseListsThatMultiply) {
    std::vector<std::string> objects;
    for (std::uint64_t i = 1; i <= 40; ++i) {
        objects.push_back(arrayOf({i, i}));
    }
    objects.push_back(text);
    EXPECT_FALSE(isWithinBounds(binaryList(objects)));
}

TEST(PropertyListBounds, refuseTextsThatMultiply) {
    const std::string longText = bytes({0x5F, 0x11}) + bigEndian(20'000, 2) + std::string(20'000, 'a');
    EXPECT_TRUE(isWithinBounds(binaryList({arrayOf(std::vector<std::uint64_t>(800, 1)), longText})));
    EXPECT_FALSE(isWithinBounds(binaryList({arrayOf(std::vector<std::uint64_t>(900, 1)), longText})));
    const std::string wideText = bytes({0x6F, 0x11}) + bigEndian(10'000, 2) + std::string(20'000, 'a');
    EXPECT_FALSE(isWithinBounds(binaryList({arrayOf(std::vector<std::uint64_t>(900, 1)), wideText})));
}

TEST(PropertyListBounds, refuseManyObjectsInTheSameBytes) {
    // Each of the objects is the same array of 20,000 references.
    std::string list = "bplist00" + arrayOf(std::vector<std::uint64_t>(20'000, 999));
    const std::size_t table = list.size();
    for (int i = 0; i < 1000; ++i) {
        list += bigEndian(8, 2);
    }
    EXPECT_FALSE(isWithinBounds(list + trailerOf({.objects = 1000, .offsetTable = table})));
}

TEST(PropertyListBounds, refuseKeysOfWideCharactersThatHoldANul) {
    const std::string dictionary = bytes({0xD1, 0, 1, 0, 2});
    const std::string wide = bytes({0x63, 0, 'a', 1, 0, 0, 'b'});
    EXPECT_TRUE(isWithinBounds(binaryList({dictionary, wide, text})));
    for (const std::string& key :
         {bytes({0x63, 0, 'a', 0, 0, 0, 'b'}), bytes({0x62, 0, 'a', 0, 0}),
          bytes({0x6F, 0x10, 2, 0, 0, 0, 'a'})}) {
        EXPECT_FALSE(isWithinBounds(binaryList({dictionary, key, text})));
        EXPECT_TRUE(isWithinBounds(binaryList({dictionary, text, key})));
    }
}

TEST(PropertyListBounds, refuseCountsThatBreakOff) {
    // The only object begins in the last bytes, which are also the place of the offset table.
    const auto listWithTableAt = [](std::uint64_t table, std::uint64_t bytesOfObject) {
        std::string list = "bplist00";
        list.resize(table);
        list += bigEndian(table + 2 + 32 - bytesOfObject, 2);
        return list + trailerOf({.objects = 1, .offsetTable = table});
    };
    EXPECT_FALSE(isWithinBounds(listWithTableAt(0x5F, 1)));
    EXPECT_FALSE(isWithinBounds(listWithTableAt(0x5F10, 2)));
    EXPECT_TRUE(isWithinBounds(listWithTableAt(0x51, 1)));
}

TEST(PropertyListBounds, refuseWhatLiesOutsideTheBytes) {
    EXPECT_FALSE(isWithinBounds(binaryList({})));
    EXPECT_FALSE(isWithinBounds(binaryList({arrayOf({1})})));
    const std::string missingReferences = bytes({0xAF, 0x11}) + bigEndian(60'000, 2);
    EXPECT_FALSE(isWithinBounds(binaryList({missingReferences})));
    const std::string hugeCount = bytes({0xAF, 0x13}) + std::string(8, '\xFF');
    EXPECT_FALSE(isWithinBounds(binaryList({hugeCount})));
    EXPECT_FALSE(isWithinBounds(binaryList({bytes({0xAF, 0x14}) + std::string(16, '\0')})));
    EXPECT_FALSE(isWithinBounds(
        "bplist00" + text + bigEndian(9999, 2) + trailerOf({.objects = 1, .offsetTable = 10})));
    const std::string start = "bplist00" + text + bigEndian(8, 2);
    EXPECT_TRUE(isWithinBounds(start + trailerOf({.objects = 1, .offsetTable = 10})));
    for (const Trailer& trailer :
         {Trailer{.objects = 2, .offsetTable = 10}, Trailer{.objects = 1, .root = 1, .offsetTable = 10},
          Trailer{.objects = 1, .offsetTable = 9999},
          Trailer{.offsetSize = 0, .objects = 1, .offsetTable = 10},
          Trailer{.offsetSize = 9, .objects = 1, .offsetTable = 10},
          Trailer{.referenceSize = 0, .objects = 1, .offsetTable = 10},
          Trailer{.objects = ~std::uint64_t{0}, .offsetTable = 10},
          Trailer{.objects = 1, .offsetTable = ~std::uint64_t{0}}}) {
        EXPECT_FALSE(isWithinBounds(start + trailerOf(trailer)));
    }
}

TEST(PropertyListBounds, countTagsInText) {
    const auto lists = [](std::string_view tag, int times) {
        std::string result;
        for (int i = 0; i < times; ++i) {
            result += tag;
        }
        return result;
    };
    EXPECT_TRUE(isWithinBounds("no list"));
    EXPECT_TRUE(isWithinBounds(lists("<array></array>", 10'000)));
    EXPECT_FALSE(isWithinBounds(lists("<array></array>", 10'001)));
    EXPECT_TRUE(isWithinBounds(lists("<dict/>", 10'000)));
    EXPECT_FALSE(isWithinBounds(lists("<dict a='b'>", 10'001)));
    EXPECT_FALSE(isWithinBounds("<!--" + lists("<array>", 10'001) + "-->"));
    EXPECT_TRUE(isWithinBounds(lists("<a>", 200'000)));
    EXPECT_FALSE(isWithinBounds(lists("<a>", 200'001)));
}

} // namespace
} // namespace tolvane::tests
