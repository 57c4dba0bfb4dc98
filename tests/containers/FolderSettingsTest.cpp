#include "containers/FolderSettings.h"

#include "tests/containers/Samples.h"
#include "tests/support/FolderSettingsFiles.h"

namespace tolvane::containers {
namespace {

using namespace tests;
using platform::Data;

std::string_view settingsFault(const Data& bytes) {
    const auto settings = readFolderSettings(bytes);
    if (settings) {
        return "nothing";
    }
    EXPECT_LE(settings.error().offset, bytes.size());
    return settings.error().expected;
}

const std::vector<WrittenSetting> threeSettings{
    {".", "vSrn", "long", Data(4)}, {"a", "dilc", "comp", Data(8)}, {"b", "flag", "bool", Data(1)}};

/// With one that lies in a block above the others.
std::vector<WrittenSetting> fourSettings() {
    std::vector<WrittenSetting> four = threeSettings;
    four.push_back({"c", "flag", "bool", Data(1)});
    return four;
}

TEST(FolderSettings, areReadWithEveryType) {
    std::vector<WrittenSetting> written = threeSettings;
    written.push_back(blobSetting("c", "icvp", bytesOf("bytes")));
    written.push_back(textSetting("d", "cmmt", "note"));
    written.push_back({"e", "moDD", "dutc", Data(8)});
    written.push_back({"f", "vstl", "type", bytesOf("icnv")});
    written.push_back({"g", "icsp", "shor", Data(4)});
    const Data bytes = folderSettingsFile(written);
    const auto settings = readFolderSettings(bytes);
    ASSERT_TRUE(settings) << settings.error().expected;
    ASSERT_EQ(settings->size(), written.size());
    for (std::size_t i = 0; i < written.size(); ++i) {
        EXPECT_EQ((*settings)[i].name, written[i].name);
        EXPECT_EQ((*settings)[i].code, written[i].code);
        EXPECT_EQ((*settings)[i].type, written[i].type);
    }
    EXPECT_EQ(Data((*settings)[3].value.begin(), (*settings)[3].value.end()), bytesOf("bytes"));
    EXPECT_EQ((*settings)[4].value.size(), 8U);
}

TEST(FolderSettings, mayBeNone) {
    const auto settings = readFolderSettings(folderSettingsFile({}));
    ASSERT_TRUE(settings);
    EXPECT_TRUE(settings->empty());
}

TEST(FolderSettings, areRefusedWhereTheirBlocksAreWrong) {
    const Data bytes = folderSettingsFile(threeSettings);
    constexpr std::size_t table = 4 + 4096;
    constexpr std::size_t tree = table + 4096;
    constexpr std::size_t node = tree + 4096;
    EXPECT_EQ(settingsFault(bytes), "nothing");
    EXPECT_EQ(settingsFault(withByte(bytes, 5, 'a')), "the letters Bud1 after a 1");
    EXPECT_EQ(settingsFault(withByte(bytes, 8, 1)), "the place of the table of blocks");
    EXPECT_EQ(settingsFault(withByte(bytes, table, 1)), "no more blocks than the table has room for");
    EXPECT_EQ(settingsFault(withByte(bytes, table + 8 + 1024 + 5, 'X')), "an entry named DSDB");
    EXPECT_EQ(settingsFault(withByte(bytes, tree + 3, 9)), "a block within the file");
    EXPECT_EQ(settingsFault(withByte(bytes, tree + 3, 1)), "a block that is read once");
    EXPECT_EQ(settingsFault(withByte(bytes, node + 7, 4)), "a record of a known type");
    EXPECT_EQ(settingsFault(withByte(bytes, node + 4, 4)), "a record of a known type");
    EXPECT_EQ(settingsFault(withByte(bytes, node + 8, 1)), "a record within its block");
    EXPECT_EQ(settingsFault(withByte(bytes, node + 18, 'X')), "a record of a known type");
}

TEST(FolderSettings, areRefusedWhereAValueLeavesItsBlock) {
    const Data bytes = folderSettingsFile({blobSetting("a", "icvp", Data(8))});
    EXPECT_EQ(settingsFault(withByte(bytes, 4 + 3 * 4096 + 22, 1)), "a value within its block");
}

TEST(FolderSettings, areRefusedWhereTheTreeIsACircle) {
    const Data bytes = folderSettingsFile(fourSettings());
    EXPECT_EQ(settingsFault(bytes), "nothing");
    constexpr std::size_t above = 4 + 3 * std::size_t{4096};
    EXPECT_EQ(settingsFault(withByte(bytes, above + 11, 2)), "a block that is read once");
    EXPECT_EQ(settingsFault(withByte(bytes, above + 3, 3)), "a block that is read once");
}

TEST(FolderSettings, areRefusedWhereBlocksOverlap) {
    Data bytes = folderSettingsFile(fourSettings());
    constexpr std::size_t firstAddress = 4 + 4096 + 8;
    constexpr unsigned largestSize = 31;
    for (std::size_t address = firstAddress; address < firstAddress + 5 * sizeof(std::uint32_t);
         address += 4) {
        bytes.at(address + 3) |= std::byte{largestSize};
    }
    EXPECT_EQ(settingsFault(bytes), "a block that overlaps no other");
}

TEST(FolderSettings, areReadOrRefusedWhereverTheyAreCut) {
    const Data bytes = folderSettingsFile(threeSettings);
    for (std::size_t count = 0; count < bytes.size(); count += 97) {
        settingsFault(front(bytes, count));
    }
    EXPECT_FALSE(isLikeFolderSettings(bytesOf("Bud1")));
}

} // namespace
} // namespace tolvane::containers
