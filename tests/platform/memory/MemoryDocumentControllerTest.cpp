#include "platform/memory/MemoryDocumentController.h"

#include "platform/WindowController.h"
#include "tests/support/DetailsWindow.h"
#include "tests/support/NumberedItems.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <string>

namespace tolvane::tests {
namespace {

using platform::URL;

class MemoryDocumentControllerTest : public testing::Test {
protected:
    platform::Result<std::shared_ptr<platform::Document>> open(const std::string& path) {
        return controller.openDocumentWithContentsOfURL(URL::fileURLWithPath(path));
    }

    DetailsWindow details;
    NumberedItems items;
    int made = 0;
    platform::MemoryDocumentController controller{items, [this] {
                                                      ++made;
                                                      return std::make_shared<inspect::Document>(
                                                          details.fileSources(), details.bundle);
                                                  }};
};

TEST_F(MemoryDocumentControllerTest, opensADocumentAndShowsItsWindow) {
    items.identities = {{"/a", 1}};
    const auto document = open("/a");
    ASSERT_TRUE(document);
    EXPECT_EQ((*document)->fileURL(), URL::fileURLWithPath("/a"));
    const auto& window = (*document)->windowControllers().front()->window();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->title(), "a");
}

TEST_F(MemoryDocumentControllerTest, makesNoDocumentForAnItemThatIsNotThere) {
    const auto document = open("/nowhere");
    ASSERT_FALSE(document);
    EXPECT_EQ(document.error().code, ENOENT);
    EXPECT_EQ(made, 0);
}

TEST_F(MemoryDocumentControllerTest, tellsTheURLTheIdentityItWasOpenedWith) {
    items.identities = {{"/a", 9}};
    const auto document = open("/a");
    items.identities.clear();
    const auto& record = std::dynamic_pointer_cast<inspect::Document>(*document)->theSizes().front();
    const auto* kept = record->url().keptResourceValue("NSURLFileResourceIdentifierKey");
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(*kept, platform::Value(platform::Data(16, std::byte{9})));
}

TEST_F(MemoryDocumentControllerTest, dropsAFinalSlashThatChangesNothing) {
    items.identities = {{"/folder", 1}, {"/folder/", 1}};
    EXPECT_EQ((*open("/folder/"))->fileURL(), URL::fileURLWithPath("/folder"));
}

TEST_F(MemoryDocumentControllerTest, keepsAFinalSlashThatLeadsThroughALink) {
    items.identities = {{"/link", 1}, {"/link/", 2}};
    const auto document = open("/link/");
    EXPECT_EQ((*document)->fileURL(), URL::fileURLWithPath("/link/"));
    EXPECT_EQ((*document)->displayName(), "link");
}

TEST_F(MemoryDocumentControllerTest, opensTheRoot) {
    items.identities = {{"/", 1}};
    EXPECT_EQ((*open("/"))->fileURL(), URL::fileURLWithPath("/"));
    EXPECT_EQ((*open("/"))->displayName(), "/");
}

} // namespace
} // namespace tolvane::tests
