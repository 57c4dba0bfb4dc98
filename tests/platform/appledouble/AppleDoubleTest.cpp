#include "platform/appledouble/AppleDouble.h"

#include "tests/support/AppleDoubleFiles.h"
#include "tests/support/Bytes.h"
#include "tests/support/ScriptedSources.h"

#include <gtest/gtest.h>

namespace tolvane::platform {
namespace {

using namespace tests;

ForkFault faultOf(const Data& bytes) {
    const auto file = readAppleDouble(bytes);
    return file ? ForkFault{0, "nothing"} : file.error();
}

ForkFault attributeFaultOf(const Data& bytes) {
    const auto file = readAppleDouble(bytes);
    const auto block = readAppleDoubleAttributes(file.value(), bytes);
    return block ? ForkFault{0, "nothing"} : block.error();
}

TEST(AppleDouble, hasItsPartsInTheFilesOrder) {
    const Data bytes = companionFile({{9, Data(32, std::byte{7})}, {4, bytesOf("note")}, {2, {}}});
    const auto file = readAppleDouble(bytes);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->form, AppleDoubleForm::companion);
    EXPECT_EQ(file->version, 0x0002'0000U);
    EXPECT_EQ(file->filler[0], std::byte{'M'});
    EXPECT_EQ(file->length, bytes.size());
    ASSERT_EQ(file->entries.size(), 3U);
    EXPECT_EQ(file->entries[1].identifier, apple_double_entry::comment);
    EXPECT_EQ(file->entries[1].offset, 26U + 36 + 32);
    EXPECT_EQ(textOfBytes(file->entries[1].bytes), "note");
    EXPECT_EQ(file->entry(apple_double_entry::comment), &file->entries[1]);
    EXPECT_EQ(file->entry(apple_double_entry::realName), nullptr);
    EXPECT_TRUE(file->entry(apple_double_entry::resourceFork)->bytes.empty());
}

TEST(AppleDouble, isReadInBothVersionsAndForms) {
    const auto first = companionFile({{7, Data(16)}}, 0x0001'0000);
    const auto single = companionFile({{1, bytesOf("text")}}, 0x0002'0000, 0x0005'1600);
    EXPECT_EQ(readAppleDouble(first)->version, 0x0001'0000U);
    EXPECT_EQ(readAppleDouble(single)->form, AppleDoubleForm::single);
    EXPECT_EQ(faultOf(companionFile({}, 0x0003'0000)), (ForkFault{4, "version 1 or 2"}));
    EXPECT_EQ(faultOf(companionFile({}, 0x0002'0000, 0x0005'1608)).offset, 0U);
}

TEST(AppleDouble, mayHaveNoParts) {
    const Data bytes = companionFile({});
    EXPECT_TRUE(readAppleDouble(bytes)->entries.empty());
    EXPECT_TRUE(readAppleDoubleAttributes(*readAppleDouble(bytes), bytes)->attributes.empty());
}

TEST(AppleDouble, ofTwoEqualPartsFindsTheFirst) {
    const Data bytes = companionFile({{4, bytesOf("one")}, {4, bytesOf("two")}});
    const auto file = readAppleDouble(bytes);
    EXPECT_EQ(file->entry(4)->bytes.data(), bytes.data() + 50);
}

TEST(AppleDouble, isRefusedWhereAPartLeavesTheFile) {
    const Data bytes = companionFile({{9, Data(32)}, {2, Data(8)}});
    ASSERT_TRUE(readAppleDouble(bytes));
    EXPECT_EQ(faultOf(front(bytes, bytes.size() - 1)), (ForkFault{38, "a part within the file"}));
    EXPECT_EQ(faultOf(withByte(bytes, 42, 0xFF)).offset, 38U) << "offset past the end";
    EXPECT_EQ(faultOf(withByte(bytes, 46, 0xFF)).offset, 38U) << "length past the end";
    EXPECT_EQ(
        faultOf(withByte(bytes, 24, 0xFF)), (ForkFault{24, "no more parts than the file has room for"}));
}

TEST(AppleDouble, acceptsAnEmptyPartAnywhere) {
    const Data bytes = withByte(companionFile({{2, {}}}), 30, 0xFF);
    ASSERT_TRUE(readAppleDouble(bytes));
    EXPECT_TRUE(readAppleDouble(bytes)->entry(2)->bytes.empty());
}

TEST(AppleDouble, isRefusedWhenCutOffAnywhere) {
    const Data bytes = companionFile({{9, Data(32)}, {2, Data(8)}});
    for (std::size_t count = 0; count < bytes.size(); ++count) {
        const Data cut = front(bytes, count);
        EXPECT_FALSE(readAppleDouble(cut)) << count;
        EXPECT_LE(faultOf(cut).offset, count);
    }
}

TEST(AppleDoubleAttributes, areReadWithTheirValues) {
    const Data bytes = companionFileWithAttributes({{"a", "1"}, {"com.example.long", ""}, {"bc", "two"}});
    const auto block = readAppleDoubleAttributes(readAppleDouble(bytes).value(), bytes);
    ASSERT_TRUE(block);
    EXPECT_EQ(block->debugTag, 0x1234U);
    EXPECT_EQ(block->totalSize, bytes.size());
    EXPECT_EQ(block->dataLength, 4U);
    ASSERT_EQ(block->attributes.size(), 3U);
    EXPECT_EQ(block->attributes[0].name, "a");
    EXPECT_EQ(textOfBytes(block->attributes[0].value), "1");
    EXPECT_EQ(block->attributes[0].offset, block->dataStart);
    EXPECT_EQ(block->attributes[1].name, "com.example.long");
    EXPECT_TRUE(block->attributes[1].value.empty());
    EXPECT_EQ(block->attributes[2].name, "bc");
    EXPECT_EQ(textOfBytes(block->attributes[2].value), "two");
}

TEST(AppleDoubleAttributes, areNoneWithoutABlock) {
    for (const std::size_t length : {0U, 32U, 34U, 38U, 70U}) {
        const Data bytes = companionFile({{9, Data(length)}});
        EXPECT_TRUE(readAppleDoubleAttributes(readAppleDouble(bytes).value(), bytes)->attributes.empty());
    }
    const Data empty = companionFileWithAttributes({});
    EXPECT_TRUE(readAppleDoubleAttributes(readAppleDouble(empty).value(), empty)->attributes.empty());
}

TEST(AppleDoubleAttributes, areRefusedWhereOneLeavesTheFile) {
    const Data bytes = companionFileWithAttributes({{"abc", "value"}}, Data(3));
    EXPECT_EQ(attributeFaultOf(bytes).expected, "nothing");
    EXPECT_EQ(attributeFaultOf(withByte(bytes, 120, 1)).expected, "an attribute's value within the file");
    EXPECT_EQ(attributeFaultOf(withByte(bytes, 124, 1)).expected, "an attribute's value within the file");
    EXPECT_EQ(attributeFaultOf(withByte(bytes, 130, 0xFF)).expected, "an attribute's name within the file");
    EXPECT_EQ(attributeFaultOf(withByte(bytes, 118, 0xFF)).expected, "an attribute's name within the file")
        << "more attributes than there are";
    Data noHeader = companionFile({{9, Data(40)}});
    const Data letters = bytesOf("ATTR");
    std::ranges::copy(letters, noHeader.begin() + 38 + 34);
    EXPECT_EQ(attributeFaultOf(noHeader).expected, "a header of attributes within the file");
}

TEST(AppleDoubleAttributes, haveNamesThatEndWithTheirOnlyNul) {
    const std::string_view expected = "a name of an attribute that ends with its only NUL";
    const Data bytes = companionFileWithAttributes({{"abc", "value"}});
    EXPECT_EQ(attributeFaultOf(withByte(bytes, 134, 'd')), (ForkFault{131, expected}));
    EXPECT_EQ(attributeFaultOf(withByte(bytes, 132, 0)).expected, expected);
    EXPECT_EQ(attributeFaultOf(companionFileWithAttributes({{"", "value"}})).expected, expected);
    EXPECT_EQ(attributeFaultOf(withByte(bytes, 130, 0)).expected, expected);
}

} // namespace
} // namespace tolvane::platform
