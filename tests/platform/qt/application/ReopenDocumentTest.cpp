#include "platform/model/Document.h"
#include "platform/model/WindowController.h"
#include "platform/qt/application/QtDocumentController.h"
#include "tests/platform/qt/Shell.h"
#include "tests/support/NumberedItems.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace tolvane::tests {
namespace {

using platform::URL;
using testing::ElementsAre;

class ReadDocument final : public platform::Document {
public:
    bool readFromURL(const URL& /*url*/, std::string_view /*typeName*/, platform::Error* /*error*/) override {
        return true;
    }
    void makeWindowControllers() override {
        addWindowController(platform::WindowController::make(std::make_shared<platform::Window>(), nullptr));
    }
};

class ReopenDocument : public testing::Test {
protected:
    ReopenDocument() {
        items.identities = {{"/a", 1}};
        document = controller.openDocumentWithContentsOfURL(URL::fileURLWithPath("/a")).value();
        window = document->windowControllers().front()->window();
    }

    Shell shell;
    NumberedItems items;
    platform::QtDocumentController controller{
        {items, shell.recentDocuments, [] { return std::make_shared<ReadDocument>(); },
         [](const std::string& /*message*/, const std::string& /*reason*/, const std::string& /*details*/) {},
         [](const std::function<void(const std::vector<URL>&)>& /*handler*/) {}}};
    std::shared_ptr<platform::Document> document;
    std::shared_ptr<platform::Window> window;
};

TEST_F(ReopenDocument, givesTheWindowToANewDocument) {
    int closed = 0;
    const auto closing = window->observeWillClose([&] { ++closed; });
    const auto reopened = controller.reopenDocument(document).value();
    EXPECT_NE(reopened, document);
    EXPECT_THAT(controller.documents(), ElementsAre(reopened));
    EXPECT_EQ(reopened->windowControllers().front()->window(), window);
    EXPECT_EQ(window->windowController()->document(), reopened);
    EXPECT_TRUE(document->windowControllers().empty());
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(closed, 0);
    EXPECT_EQ(controller.openDocumentWithContentsOfURL(URL::fileURLWithPath("/a")).value(), reopened);
}

TEST_F(ReopenDocument, letsGoOfTheNewDocumentWithItsWindow) {
    std::weak_ptr<platform::Document> reopened = controller.reopenDocument(document).value();
    window->close();
    QCoreApplication::processEvents();
    EXPECT_TRUE(reopened.expired());
    EXPECT_TRUE(controller.documents().empty());
}

TEST_F(ReopenDocument, remembersTheItemThatIsThereNow) {
    items.identities = {{"/a", 2}};
    const auto reopened = controller.reopenDocument(document).value();
    const auto* const key = "NSURLFileResourceIdentifierKey";
    ASSERT_NE(reopened->fileURL()->keptResourceValue(key), nullptr);
    EXPECT_NE(*reopened->fileURL()->keptResourceValue(key), *document->fileURL()->keptResourceValue(key));
}

TEST_F(ReopenDocument, leavesEverythingWhereTheItemIsGone) {
    items.identities.clear();
    EXPECT_FALSE(controller.reopenDocument(document));
    EXPECT_THAT(controller.documents(), ElementsAre(document));
    EXPECT_EQ(window->windowController()->document(), document);
    EXPECT_TRUE(window->isVisible());
}

} // namespace
} // namespace tolvane::tests
