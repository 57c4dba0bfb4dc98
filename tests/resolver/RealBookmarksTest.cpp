// The resolver window over the real reader of files and bookmarks: from the choice in the panel to what the
// boxes show.
#include "platform/bookmark/description/BookmarkProperties.h"
#include "platform/bookmark/format/OldAliasRecord.h"
#include "platform/linux/bookmarks/LinuxBookmarks.h"
#include "platform/linux/files/LinuxExtendedAttributeCalls.h"
#include "platform/linux/files/LinuxFileManager.h"
#include "platform/values/Base64.h"
#include "resolver/TRViewController.h"
#include "tests/support/BookmarkCorpus.h"
#include "tests/support/MemoryStoryboard.h"
#include "tests/support/MemoryUserDefaults.h"
#include "tests/support/OldAliasFiles.h"
#include "tests/support/ScriptedPanels.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <string>

namespace tolvane::tests {
namespace {

using testing::HasSubstr;

class RealBookmarksTest : public testing::Test {
protected:
    RealBookmarksTest() {
        const resolver::ResolverSources sources{
            bookmarks, platform::readStoredProperties, fileManager, openPanels, appleScripts, previewPanels,
            defaults};
        storyboard.addWindowScene("Bookmark Resolver Window", [sources](const platform::Coder& coder) {
            return resolver::TRViewController::initWithCoder(coder, sources);
        });
        windowController = std::dynamic_pointer_cast<platform::WindowController>(
            storyboard.instantiateControllerWithIdentifier("Bookmark Resolver Window"));
        windowController->showWindow();
        controller =
            std::dynamic_pointer_cast<resolver::TRViewController>(windowController->contentViewController());
    }

    /// Presses the button and chooses this item in the panel.
    void choose(const std::string& path) {
        controller->openFileButton(nullptr);
        openPanels.newest()->inner.answer(platform::modalResponseOK, platform::URL::fileURLWithPath(path));
    }

    std::string input() const { return controller->inputTextbox->string(); }
    std::string output() const { return controller->outputTextbox->string(); }

    platform::LinuxBookmarks bookmarks;
    platform::LinuxExtendedAttributeCalls extendedAttributes;
    platform::LinuxFileManager fileManager{extendedAttributes};
    CallLog log;
    ScriptedOpenPanels openPanels{log};
    ScriptedAppleScripts appleScripts{log};
    ScriptedPreviewPanels previewPanels{log};
    platform::MemoryUserDefaults defaults;
    platform::MemoryStoryboard storyboard;
    std::shared_ptr<platform::WindowController> windowController;
    std::shared_ptr<resolver::TRViewController> controller;
};

TEST_F(RealBookmarksTest, showsAChosenAliasFileAsOneLineAndItsAnalysis) {
    choose(corpusPath("note.alias"));
    EXPECT_EQ(input(), base64Of(corpusText("note.bookmark")));
    EXPECT_THAT(
        output(),
        testing::StartsWith("Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkAllPropertiesKey): {\n"
                            "    NSURLBookmarkOriginalRelativePathComponentsArrayKey =     (\n"
                            "        Users,\n"
                            "        demo,\n"
                            "        \"note.txt\"\n"
                            "    );\n"));
    EXPECT_THAT(
        output(),
        HasSubstr(
            "    \"_NSURLPathKey\" = \"/Users/demo/note.txt\";\n"
            "}])\n\n\n"
            "Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkDetailedDescription): Bookmark data: 648 "
            "bytes, version 0x10040000, data at 0x30\n"
            "TOC at 0x184: level=1 nextTOC=0x0 items=16\n"
            "0) itemType=0x1004 flags=0x0 dataOffset=0x3c pathComponents:\"( Users, demo, note.txt )\"\n"));
    EXPECT_THAT(output(), testing::EndsWith("\"])"));
    EXPECT_EQ(controller->filePathTextbox->stringValue(), "");
    EXPECT_EQ(controller->bmURL(), std::nullopt);
}

TEST_F(RealBookmarksTest, showsWhatAnAliasFileFromBeforeBookmarksHolds) {
    const TemporaryFolder folder;
    const std::string path = folder.file("old alias");
    const platform::Data record = aliasBytes(2, 0, "Disk");
    if (!setExtendedAttribute(path, "user.com.apple.ResourceFork", textOf(forkWith({{0, record}})))) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    choose(path);
    EXPECT_EQ(input(), platform::base64EncodedString(platform::bookmarkOfAliasRecord(record)));
    EXPECT_THAT(output(), HasSubstr("Bookmark data of an alias record: "));
    EXPECT_THAT(
        output(), HasSubstr("itemType=0xfe00 flags=0x0 dataOffset=0x4 aliasData:\"<00000000 00960002 "));
}

TEST_F(RealBookmarksTest, saysWhenTheChosenItemHoldsNoBookmark) {
    const TemporaryFolder folder;
    choose(corpusPath("note.alias"));
    const std::string before = output();
    for (const std::string& path :
         {folder.path(), folder.file("text", "plain"), folder.fifo("fifo"), folder.path("missing"),
          folder.symlink("link", corpusPath("note.alias")), corpusPath("bad-record-past-end.bookmark")}) {
        controller->inputTextbox->setString("earlier");
        choose(path);
        EXPECT_EQ(input(), "Couldn't get Alias.") << path;
        EXPECT_EQ(output(), before) << path;
    }
}

TEST_F(RealBookmarksTest, analysesAWrappedBookmarkThatIsNotResolved) {
    std::string text = base64Of(corpusText("share.bookmark"));
    for (std::size_t place = 76; place < text.size(); place += 78) {
        text.insert(place, " \n");
    }
    controller->inputTextbox->setString(text);
    controller->resolveButton(nullptr);
    EXPECT_THAT(output(), HasSubstr("    NSURLVolumeNameKey = Share;\n"));
    EXPECT_EQ(controller->filePathTextbox->stringValue(), "Couldn't resolve Bookmark.")
        << "its volume is not here";
    EXPECT_EQ(controller->bmURL(), std::nullopt);
}

} // namespace
} // namespace tolvane::tests
