#include "inspect/Document.h"

#include "platform/model/WindowController.h"
#include "tests/support/DetailsWindow.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace tolvane::tests {
namespace {

using inspect::Document;

class InspectedDocument : public testing::Test {
protected:
    const std::vector<std::shared_ptr<const inspect::SizeData>>& sizes() {
        return details.document()->theSizes();
    }

    DetailsWindow details;
};

TEST_F(InspectedDocument, isNeverAutosavedAndNeverEdited) {
    static_assert(!Document::autosavesInPlace());
    details.open();
    EXPECT_FALSE(details.document()->isDocumentEdited());
    details.readAgain();
    EXPECT_FALSE(details.document()->isDocumentEdited());
}

TEST_F(InspectedDocument, makesItsWindowFromTheStoryboard) {
    details.open();
    ASSERT_EQ(details.document()->windowControllers().size(), 1U);
    EXPECT_EQ(details.document()->windowControllers().front()->document(), details.document());
    EXPECT_EQ(details.controller().nibName(), "Document Window Controller");
    EXPECT_EQ(details.window().title(), "notes.txt");
}

TEST_F(InspectedDocument, appendsARecordForEachReadAndShowsTheFirst) {
    details.open();
    details.resources.values.set("NSURLFileSizeKey", std::int64_t{77});
    details.readAgain();
    ASSERT_EQ(sizes().size(), 2U);
    EXPECT_EQ(sizes()[0]->uDataSize(), 1'000);
    EXPECT_EQ(sizes()[1]->uDataSize(), 77);
    details.showAgain();
    EXPECT_EQ(details.controller().urlDataSize->stringValue(), "1000");
}

TEST_F(InspectedDocument, readsAnItemThatCannotBeMeasured) {
    details.resources.failingKey = "NSURLFileSizeKey";
    details.open();
    ASSERT_EQ(sizes().size(), 1U);
    EXPECT_EQ(sizes().front()->uTotalSize(), 0);
    EXPECT_TRUE(sizes().front()->inode().empty());
    EXPECT_TRUE(details.window().isVisible());
    EXPECT_EQ(details.controller().filemanTotalSize->stringValue(), "0");
}

TEST_F(InspectedDocument, ignoresTheTypeAndLeavesTheErrorAlone) {
    Document document(details.fileSources(), details.bundle);
    EXPECT_TRUE(document.theSizes().empty());
    platform::Error error{"untouched", 7, {}};
    EXPECT_TRUE(document.readFromURL(details.url, "no.such-type", &error));
    EXPECT_EQ(error.domain, "untouched");
    EXPECT_EQ(error.code, 7);
}

using InspectedDocumentDeathTest = InspectedDocument;

TEST_F(InspectedDocumentDeathTest, stopsWhenTheSceneIsNotAWindowController) {
    details.bundle.storyboard("Main").addScene(
        "Document Window Controller", [this](const platform::Coder& coder) {
            return details::ViewController::initWithCoder(coder, details.detailsSources());
        });
    EXPECT_DEATH(
        details.open(), "^tolvane: fatal: \"Document Window Controller\" is not a window controller");
}

TEST_F(InspectedDocumentDeathTest, stopsWhenTheSceneOrTheStoryboardIsMissing) {
    const auto documentOver = [this](const platform::Bundle& bundle) {
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
