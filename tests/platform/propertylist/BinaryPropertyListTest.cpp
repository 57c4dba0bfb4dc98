// Bounds and sharing; PropertyListCorpusTest has the objects and their faults.
#include "platform/propertylist/PropertyListReaders.h"
#include "tests/platform/propertylist/Reading.h"
#include "tests/support/PropertyListWriters.h"

namespace tolvane::platform {
namespace {

using namespace tests;

Value binaryValue(const BinaryObjects& objects) {
    return listValue(objects.list(), PropertyListForm::binary);
}

constexpr auto tooMuchSharing = "objects that are not shared too often to be written out";

TEST(BinaryPropertyList, readsWholeNumbersOfEachWidth) {
    for (std::size_t width = 1, low = 0; width <= 4; width *= 2, ++low) {
        const auto object = static_cast<char>(0x10 + low) + bigEndian(~std::uint64_t{0}, width);
        EXPECT_EQ(binaryValue({.objects = {object}}), Value((std::int64_t{1} << (8 * width)) - 1))
            << "without a sign";
    }
    for (std::size_t width = 1; width <= 16; ++width) {
        const auto object = static_cast<char>(0x7F + width) + bigEndian(200, width);
        EXPECT_EQ(binaryValue({.objects = {object}}), Value(Dictionary{{"CF$UID", std::int64_t{200}}}));
    }
}

TEST(BinaryPropertyList, hasItsTopObjectAnywhere) {
    const std::string text = marker(0x5, 1) + "a";
    EXPECT_EQ(binaryValue({.objects = {text, container(0xA, {0}), text}, .top = 1}), Value(Array{"a"}));
}

TEST(BinaryPropertyList, isNestedUpToALimit) {
    const auto nested = [](std::size_t depth) {
        BinaryObjects list{.objects = {}, .referenceSize = 4, .offsetSize = 4};
        for (std::size_t i = 1; i < depth; ++i) {
            list.objects.push_back(container(i % 2 == 0 ? 0xA : 0xC, {i}, 4));
        }
        list.objects.push_back(container(0xD, {}));
        return list.list();
    };
    EXPECT_TRUE(readList(nested(512)));
    const PropertyListFault fault{8 + 512 * 5, "containers at most 512 deep"};
    EXPECT_EQ(listFault(nested(513)).expected, fault.expected);
    EXPECT_EQ(listFault(nested(100'000)), fault);
}

TEST(BinaryPropertyList, growsBySharingUpToALimit) {
    // An array of as many references as there are to one text: each counts as 32 bytes and the text.
    const auto shared = [](std::size_t times, std::size_t length, unsigned kind) {
        const std::string text = marker(kind, length / (kind == 0x6 ? 2 : 1)) + std::string(length, '\0');
        return BinaryObjects{
            .objects = {container(0xA, std::vector<std::size_t>(times, 1)), text}, .offsetSize = 4}
            .list();
    };
    EXPECT_TRUE(readList(shared(200, 20'000, 0x5)));
    EXPECT_EQ(listFault(shared(250, 20'000, 0x5)).expected, tooMuchSharing);
    EXPECT_EQ(listFault(shared(250, 20'000, 0x4)).expected, tooMuchSharing);
    EXPECT_EQ(listFault(shared(160, 20'000, 0x6)).expected, tooMuchSharing) << "as UTF-8 it may be longer";
    EXPECT_TRUE(readList(shared(200'000, 0, 0x5)));
    // The reference alone is a byte of the list, for which 16 are allowed.
    EXPECT_EQ(listFault(shared(300'000, 0, 0x5)), (PropertyListFault{8, tooMuchSharing}));
}

TEST(BinaryPropertyList, doesNotMultiplyWithoutBounds) {
    for (const unsigned kind : {0xAU, 0xCU, 0xDU}) {
        BinaryObjects list;
        const std::size_t key = 41;
        for (std::size_t i = 1; i <= 40; ++i) {
            list.objects.push_back(kind == 0xD ? container(kind, {key, key, i, i}) : container(kind, {i, i}));
        }
        list.objects.push_back(container(0xA, {}));
        list.objects.push_back(marker(0x5, 1) + "a");
        EXPECT_EQ(listFault(list.list()).expected, tooMuchSharing);
    }
    // Each of the objects is the same array of 20,000 references to the next.
    const std::size_t count = 20'000;
    std::string list = "bplist00" + container(0xA, std::vector<std::size_t>(count, 1), 2);
    const std::size_t table = list.size();
    list += copiesOf(bigEndian(8, 2), 1000) + std::string(6, '\0') + "\x02\x02" + bigEndian(1000, 8)
            + bigEndian(0, 8) + bigEndian(table, 8);
    EXPECT_EQ(listFault(list).expected, "an object that does not contain itself");
}

TEST(BinaryPropertyList, mayHaveAsMuchAsMacsWriteInOne) {
    Array entries;
    for (std::int64_t i = 0; i < 30'000; ++i) {
        entries.emplace_back(Dictionary{
            {"a key that all entries share", i}, {"another", "a text that all share"}, {"third", true}});
    }
    EXPECT_EQ(listValue(binaryPropertyList(entries).value(), PropertyListForm::binary), Value(entries));
}

} // namespace
} // namespace tolvane::platform
