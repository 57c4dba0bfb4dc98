// Bookmarks made to exhaust a program that parses them, and bookmarks damaged at every place.
#include "platform/bookmark/description/BookmarkDescription.h"
#include "platform/bookmark/description/BookmarkProperties.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/bookmark/format/BookmarkWriter.h"
#include "platform/values/Description.h"
#include "platform/values/Utf8.h"
#include "tests/platform/bookmark/Examples.h"

#include <cstdlib>
#include <new>
#include <set>
#include <malloc.h>

namespace {

// The bytes that 'new' has taken, and the most at one time: replaced operators have no other place for them.
std::size_t takenNow = 0;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
std::size_t mostTaken = 0; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

} // namespace

// What stands in for 'new' has to take the memory from somewhere.
// NOLINTBEGIN(cppcoreguidelines-no-malloc, cppcoreguidelines-owning-memory)

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    void* const memory = std::malloc(std::max<std::size_t>(size, 1));
    takenNow += memory == nullptr ? 0 : malloc_usable_size(memory);
    mostTaken = std::max(mostTaken, takenNow);
    return memory;
}

void* operator new(std::size_t size) {
    void* const memory = operator new(size, std::nothrow);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    takenNow -= memory == nullptr ? 0 : malloc_usable_size(memory);
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    operator delete(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    operator delete(memory);
}

// NOLINTEND(cppcoreguidelines-no-malloc, cppcoreguidelines-owning-memory)

namespace tolvane::platform {
namespace {

using namespace tests;

/// Parses the bytes, and then describes them in every way; false if they are not a bookmark.
bool readsAndKeepsItsPromises(const Data& bytes) {
    const std::expected<BookmarkStructure, BookmarkFault> structure = readBookmark(bytes);
    if (!structure) {
        EXPECT_LE(structure.error().offset, bytes.size());
        EXPECT_FALSE(structure.error().expected.empty());
        return false;
    }
    EXPECT_EQ(bookmarkBytes(*structure), bytes);
    const std::string text = bookmarkDetailedDescription(*structure);
    EXPECT_TRUE(isValidUtf8(text));
    EXPECT_LE(text.size(), 64 * bytes.size() + (8U << 20U));
    EXPECT_TRUE(isValidUtf8(description(bookmarkProperties(*structure))));
    static_cast<void>(bookmarkContents(*structure));
    return true;
}

std::vector<Data> wellFormedBookmarks() {
    return {
        noteBookmark(),
        noteAliasFile(),
        corpusData("share.bookmark"),
        corpusData("every-type.bookmark"),
        corpusData("named-keys.bookmark"),
        corpusData("three-tables.bookmark")};
}

TEST(HostileBookmarks, areRefusedWhereverTheyBreakOff) {
    for (const Data& bytes : wellFormedBookmarks()) {
        ASSERT_TRUE(readsAndKeepsItsPromises(bytes));
        for (std::size_t count = 0; count < bytes.size(); ++count) {
            EXPECT_FALSE(readsAndKeepsItsPromises(front(bytes, count))) << count;
        }
    }
}

TEST(HostileBookmarks, areReadOrRefusedWithAnyOneByteChanged) {
    const Data bytes = noteBookmark();
    std::size_t tried = 0;
    std::size_t read = 0;
    for (std::size_t offset = 0; offset < bytes.size(); ++offset) {
        const auto original = std::to_integer<unsigned>(bytes[offset]);
        // Small numbers, the neighbours, each bit turned, and the borders of signed and unsigned bytes.
        std::set<unsigned> values{
            0, 1, 2, 3, 4, 5, 6, 7, 8, 0x7F, 0x80, 0xFE, 0xFF, (original + 1) % 256, (original + 255) % 256};
        for (unsigned bit = 0; bit < 8; ++bit) {
            values.insert(original ^ (1U << bit));
        }
        for (const unsigned value : values) {
            ++tried;
            read += readsAndKeepsItsPromises(withByte(bytes, offset, value)) ? 1U : 0U;
            ASSERT_FALSE(testing::Test::HasFailure()) << offset << ' ' << value;
        }
    }
    // Payloads, flags and keys may hold anything; offsets, types and lengths may not.
    EXPECT_GT(read, tried / 4);
    EXPECT_LT(read, tried);
}

TEST(HostileBookmarks, areReadOrRefusedWithAnyOneWordChanged) {
    for (const Data& bytes : wellFormedBookmarks()) {
        for (std::size_t offset = 0; offset + 4 <= bytes.size(); offset += 4) {
            for (const std::uint32_t word :
                 {0U, 1U, 4U, 8U, 0x100U, 0x601U, 0x701U, 0x902U, 0x7FFF'FFFFU, 0x8000'0000U, 0xFFFF'FFFEU,
                  0xFFFF'FFFFU}) {
                readsAndKeepsItsPromises(withU32(bytes, offset, word));
                ASSERT_FALSE(testing::Test::HasFailure()) << offset << ' ' << word;
            }
        }
    }
}

TEST(HostileBookmarks, mayHaveManyNamedItems) {
    HandmadeSection section;
    const std::uint32_t yes = section.add(record_type::booleanTrue, {});
    std::vector<BookmarkItem> items;
    for (unsigned i = 100'000; i > 0; --i) {
        // Falling names, some of them past U+FFFF and so sorted differently by their bytes.
        const std::string name = (i % 2 == 0 ? "\U0001F600" : "\uFF41") + std::to_string(i);
        items.push_back({0x8000'0000U | section.addText(record_type::string, name), yes, 0});
    }
    const Data bytes = section.bookmark(items);
    EXPECT_TRUE(readsAndKeepsItsPromises(bytes));
    EXPECT_EQ(bookmarkProperties(readWell(bytes)).size(), 100'000U);
}

/// The place of the fault, which is expected to be that a value is shared too often.
std::size_t placeOfSharing(const Data& bytes) {
    const std::expected<BookmarkStructure, BookmarkFault> structure = readBookmark(bytes);
    const BookmarkFault fault = structure ? BookmarkFault() : structure.error();
    EXPECT_EQ(fault.expected, "values that are not shared too often to be written out");
    return fault.offset;
}

TEST(HostileBookmarks, areRefusedWhenArraysOfArraysWouldExplode) {
    HandmadeSection section;
    std::uint32_t value = section.addText(record_type::string, "again and again");
    for (unsigned level = 0; level < 14; ++level) {
        value = section.addWords(record_type::array, std::vector<std::uint32_t>(1'000, value));
    }
    const std::size_t items = 0x30 + section.end() + 20;
    EXPECT_EQ(placeOfSharing(section.bookmark({{1, value, 0}})), items + 4);
}

TEST(HostileBookmarks, areRefusedWhenThousandsOfArraysShareOneLongText) {
    HandmadeSection section;
    const std::uint32_t text = section.addText(record_type::string, std::string(100'000, 'x'));
    std::vector<BookmarkItem> items(5'000);
    for (std::uint32_t i = 0; i < items.size(); ++i) {
        items[i] = {i, section.addWords(record_type::array, {text}), 0};
    }
    EXPECT_GT(placeOfSharing(section.bookmark(items)), 0U);
}

TEST(HostileBookmarks, areRefusedWhenManyItemsShareOneLongValueOrName) {
    HandmadeSection section;
    const std::uint32_t text = section.addText(record_type::string, std::string(100'000, 'x'));
    const std::uint32_t yes = section.add(record_type::booleanTrue, {});
    std::vector<BookmarkItem> values;
    std::vector<BookmarkItem> names;
    for (std::uint32_t i = 0; i < 5'000; ++i) {
        values.push_back({i, text, 0});
        names.push_back({0x8000'0000U | text, yes, i});
    }
    EXPECT_GT(placeOfSharing(HandmadeSection(section).bookmark(values)), 0U);
    EXPECT_GT(placeOfSharing(HandmadeSection(section).bookmark(names)), 0U);
}

TEST(HostileBookmarks, mayShareAsMuchAsTheLimitAllows) {
    HandmadeSection section;
    const std::uint32_t text = section.addText(record_type::string, std::string(992, '\x01'));
    // Each item adds 1,000 bytes, and the limit rises by 96.
    std::vector<BookmarkItem> items(1'168);
    for (std::uint32_t i = 0; i < items.size(); ++i) {
        items[i] = {i, text, 0};
    }
    const Data bytes = HandmadeSection(section).bookmark(items);
    ASSERT_LE(items.size() * 1'000, 8 * (bytes.size() - 48) + (1U << 20U));
    EXPECT_TRUE(readsAndKeepsItsPromises(bytes));
    items.resize(1'170, items.back());
    EXPECT_GT(placeOfSharing(section.bookmark(items)), 0U);
}

TEST(HostileBookmarks, takeTimeInProportionToTheirLengthWhenArraysOverlap) {
    // Each word is the length, the type or an element of an array that starts there, and each array reaches
    // to the end: looking at the elements of all of them would take the square of their number.
    HandmadeSection section;
    std::vector<std::uint32_t> words;
    constexpr std::uint32_t count = 1'000'000;
    for (std::uint32_t i = 0; i < count; i += 2) {
        words.push_back((count - i - 2) * 4);
        words.push_back(record_type::array);
    }
    const std::uint32_t data = section.addWords(record_type::data, words);
    std::vector<BookmarkItem> items(10'000);
    for (std::uint32_t i = 0; i < items.size(); ++i) {
        items[i] = {i, data + 8 + i * 8, 0};
    }
    EXPECT_FALSE(readsAndKeepsItsPromises(section.bookmark(items)));
}

/// How many times the length of a bookmark reading it takes in memory.
double memoryPerByte(const Data& bytes) {
    const std::size_t before = takenNow;
    mostTaken = before;
    EXPECT_TRUE(readBookmark(bytes));
    const std::size_t peak = mostTaken - before;
    EXPECT_GT(peak, bytes.size()) << "at least the bytes themselves are kept";
    return static_cast<double>(peak) / static_cast<double>(bytes.size());
}

TEST(HostileBookmarks, mayHaveManyPartsThatTakeMemoryInProportionToTheirLength) {
    const auto expectModest = [](const std::string& parts, const Data& bytes) {
        SCOPED_TRACE(parts);
        EXPECT_TRUE(readsAndKeepsItsPromises(bytes));
        EXPECT_LT(memoryPerByte(bytes), 16);
    };
    HandmadeSection records;
    std::vector<std::uint32_t> offsets((1U << 19U) + 10);
    for (std::uint32_t& offset : offsets) {
        offset = records.add(record_type::null, {});
    }
    const std::uint32_t array = records.addWords(record_type::array, offsets);
    expectModest("records", records.bookmark({{1, array, 0}}));

    HandmadeSection tables;
    std::uint32_t table = 0;
    for (unsigned i = 0; i < (1U << 18U) + 10; ++i) {
        table = tables.addTable(i, table, {});
        // A wrong byte count is a warning that is kept.
        tables.setWord(table, 0);
    }
    expectModest("tables", tables.bookmarkWithTable(table));

    HandmadeSection items;
    const std::uint32_t yes = items.add(record_type::booleanTrue, {});
    std::vector<BookmarkItem> million(1'000'000);
    for (std::uint32_t i = 0; i < million.size(); ++i) {
        million[i] = {0x10'0000 + i, yes, 0};
    }
    expectModest("items", items.bookmark(million));

    HandmadeSection elements;
    const std::uint32_t one = elements.add(record_type::booleanTrue, {});
    const std::uint32_t shared =
        elements.addWords(record_type::array, std::vector<std::uint32_t>(1'000'000, one));
    expectModest("elements", elements.bookmark({{1, shared, 0}}));

    HandmadeSection data;
    const std::uint32_t bytes = data.add(record_type::data, Data(10'000'000));
    expectModest("data", data.bookmark({{1, bytes, 0}}));
}

} // namespace
} // namespace tolvane::platform
