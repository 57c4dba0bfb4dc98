// The entries in the menus of file managers, used as their file managers do.
#include "tests/packaging/Help.h"
#include "tests/packaging/InstalledDesktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {

namespace {

using testing::Not;
using testing::StartsWith;

class Menus : public InstalledDesktop {
protected:
    /// Expects that every entry hands over these files, and no others.
    void expectHandedOver(const std::vector<std::string>& files) {
        const std::vector<UsedEntry> entries = useMenus(files);
        EXPECT_FALSE(entries.empty());
        for (const UsedEntry& entry : entries) {
            std::vector<std::string> expected{"--"};
            if (entry.label == "Show File Names in Tolvane") {
                expected.insert(expected.begin(), "--services");
            }
            expected.insert(expected.end(), files.begin(), files.end());
            EXPECT_EQ(entry.arguments, expected) << entry.file;
        }
    }
};

TEST_F(Menus, haveBothEntriesInEachFileManager) {
    std::map<std::string, Texts> labels;
    for (const UsedEntry& entry : useMenus({"/a"})) {
        EXPECT_TRUE(labels[std::filesystem::path(entry.file).parent_path()].insert(entry.label).second);
    }
    const Texts both{"Show File Facts", "Show File Names in Tolvane"};
    EXPECT_EQ(
        labels, (std::map<std::string, Texts>{
                    {"Thunar/sendto", both},
                    {"caja-python/extensions", both},
                    {"file-manager/actions", both},
                    {"kio/servicemenus", both},
                    {"nautilus-python/extensions", both},
                    {"nemo/actions", both}}));
}

TEST_F(Menus, handOverAnyName) {
    expectHandedOver(
        {"/plain", "/two words", "/it's \"quoted\" `x`", "/two\nlines", "/100% %F %U %%", "/%41", "/-dash",
         "/--help", "/$(id) $HOME", "/a;b&c|d>e", "/back\\slash \\n", "/space ", "/#a?b", "/caf\xC3\xA9",
         "/caf\xE9", "/bytes \xFF\xFE", "/tab\there", "/{~}*[x]"});
}

TEST_F(Menus, handOverThreeHundredNames) {
    std::vector<std::string> files;
    for (std::size_t i = 0; i < 300; ++i) {
        files.push_back("/a folder with 'quotes'/name " + std::to_string(i));
    }
    expectHandedOver(files);
}

TEST_F(Menus, leaveQuotingToTheFileManager) {
    // Nemo quotes names only if it is told how.
    for (const char* const entry : {"facts", "names"}) {
        EXPECT_THAT(
            linesOf(
                contentsOfFile(share() + "/nemo/actions/example.tolvane.tolvane." + entry + ".nemo_action")),
            testing::Contains("Quote=single"));
    }
}

TEST_F(Menus, needNoMimeTypesInDesktopEntries) {
    for (const char* const folder : {"/applications", "/Thunar/sendto", "/file-manager/actions"}) {
        for (const auto& file : std::filesystem::directory_iterator(share() + folder)) {
            if (file.path().extension() != ".desktop") {
                continue;
            }
            for (const std::string& line : linesOf(contentsOfFile(file.path()))) {
                EXPECT_THAT(line, Not(StartsWith("MimeType"))) << file.path();
            }
        }
    }
}

} // namespace

} // namespace tolvane::tests
