#include "inspect/Document.h"

#include "platform/model/WindowController.h"
#include "tests/support/DetailsWindow.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>

namespace tolvane::tests {
namespace {

using inspect::Document;

TEST(Document, startsWithoutSizeRecords) {
    const DetailsWindow details;
    EXPECT_TRUE(Document(details.fileSources(), details.bundle).theSizes().empty());
}

TEST(Document, isNeverAutosavedAndNeverEdited) {
    static_assert(!Document::autosavesInPlace());
    DetailsWindow details;
    details.open();
    EXPECT_FALSE(details.document()->isDocumentEdited());
    details.readAgain();
    EXPECT_FALSE(details.document()->isDocumentEdited());
}

TEST(Document, makesItsWindowFromTheStoryboard) {
    DetailsWindow details;
    details.open();
    ASSERT_EQ(details.document()->windowControllers().size(), 1U);
    EXPECT_EQ(details.document()->windowControllers().front()->document(), details.document());
    EXPECT_EQ(details.controller().nibName(), "Document Window Controller");
    EXPECT_EQ(details.window().title(), "notes.txt");
}

TEST(Document, appendsARecordForEachReadAndShowsTheFirst) {
    DetailsWindow details;
    details.open();
    details.resources.values.set("NSURLFileSizeKey", std::int64_t{77});
    details.readAgain();
    ASSERT_EQ(details.document()->theSizes().size(), 2U);
    EXPECT_EQ(details.document()->theSizes()[0]->uDataSize(), 1'000);
    EXPECT_EQ(details.document()->theSizes()[1]->uDataSize(), 77);
    details.showAgain();
    EXPECT_EQ(details.controller().urlDataSize->stringValue(), "1000");
}

TEST(Document, readsAnItemThatCannotBeMeasured) {
    DetailsWindow details;
    details.resources.failingKey = "NSURLFileSizeKey";
    details.open();
    ASSERT_EQ(details.document()->theSizes().size(), 1U);
    EXPECT_EQ(details.document()->theSizes().front()->uTotalSize(), 0);
    EXPECT_TRUE(details.document()->theSizes().front()->inode().empty());
    EXPECT_TRUE(details.window().isVisible());
    EXPECT_EQ(details.controller().filemanTotalSize->stringValue(), "0");
}

TEST(Document, ignoresTheTypeAndLeavesTheErrorAlone) {
    const DetailsWindow details;
    Document document(details.fileSources(), details.bundle);
    platform::Error error{"untouched", 7, {}};
    EXPECT_TRUE(document.readFromURL(details.url, "no.such-type", &error));
    EXPECT_EQ(error.domain, "untouched");
    EXPECT_EQ(error.code, 7);
}

TEST(DocumentDeathTest, stopsWhenTheSceneIsNoWindowController) {
    DetailsWindow details;
    details.bundle.storyboard("Main").addScene(
        "Document Window Controller", [&details](const platform::Coder& coder) {
            return details::ViewController::initWithCoder(coder, details.detailsSources());
        });
    EXPECT_DEATH(
        details.open(), "^tolvane: fatal: \"Document Window Controller\" is not a window controller");
}

TEST(DocumentDeathTest, stopsWhenTheSceneOrTheStoryboardIsMissing) {
    const DetailsWindow details;
    const auto documentOver = [&details](const platform::Bundle& bundle) {
        return std::make_shared<Document>(details.fileSources(), bundle);
    };
    platform::MemoryBundle bundle;
    EXPECT_DEATH(
        documentOver(bundle)->makeWindowControllers(), "^tolvane: fatal: storyboard \"Main\" not found");
    bundle.storyboard("Main");
    EXPECT_DEATH(
        documentOver(bundle)->makeWindowControllers(), "^tolvane: fatal: .*is not a window controller");
}

} // namespace
} // namespace tolvane::tests
