#include "platform/model/WindowController.h"

#include "platform/model/Document.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string_view>

namespace tolvane::platform {
namespace {

class EmptyDocument final : public Document {
public:
    bool readFromURL(const URL&, std::string_view, Error*) override { return true; }
    void makeWindowControllers() override {}
};

std::shared_ptr<ContentController> makeContent() {
    return std::make_shared<ContentController>(std::nullopt, nullptr);
}

TEST(WindowController, linksWindowContentAndItself) {
    const auto window = std::make_shared<Window>();
    const auto content = makeContent();
    const auto controller = WindowController::make(window, content);
    EXPECT_EQ(controller->window(), window);
    EXPECT_EQ(controller->contentViewController(), content);
    EXPECT_EQ(window->windowController(), controller);
    EXPECT_EQ(window->contentViewController(), content);
    EXPECT_EQ(content->view().window(), window.get());
    EXPECT_EQ(controller->document(), nullptr);
}

TEST(WindowController, mayHaveABareWindow) {
    const auto controller = WindowController::make(std::make_shared<Window>(), nullptr);
    EXPECT_EQ(controller->contentViewController(), nullptr);
    EXPECT_EQ(controller->window()->contentViewController(), nullptr);
    controller->showWindow();
    EXPECT_TRUE(controller->window()->isVisible());
    controller->close();
    EXPECT_FALSE(controller->window()->isVisible());
}

TEST(WindowController, ownsItsContentWhichKeepsTheWindow) {
    auto content = makeContent();
    auto controller = WindowController::make(std::make_shared<Window>(), content);
    const std::weak_ptr<Window> window = controller->window();
    const std::weak_ptr<ContentController> watched = content;
    content.reset();
    ASSERT_FALSE(watched.expired());
    content = watched.lock();
    controller.reset();
    ASSERT_FALSE(window.expired());
    EXPECT_EQ(content->view().window()->windowController(), nullptr);
    content.reset();
    EXPECT_TRUE(watched.expired());
    EXPECT_TRUE(window.expired());
}

TEST(WindowController, takesTheTitleFromItsDocument) {
    auto document = std::make_shared<EmptyDocument>();
    document->setFileURL(URL::fileURLWithPath("/f/note.txt"));
    const auto controller = WindowController::make(std::make_shared<Window>(), nullptr);
    controller->setDocument(document);
    EXPECT_EQ(controller->document(), document);
    EXPECT_EQ(controller->window()->title(), "note.txt");
    controller->setDocument(nullptr);
    EXPECT_EQ(controller->document(), nullptr);
    EXPECT_EQ(controller->window()->title(), "note.txt") << "the title is kept";
    controller->setDocument(document);
    document.reset();
    EXPECT_EQ(controller->document(), nullptr) << "the document is not kept alive";
}

} // namespace
} // namespace tolvane::platform
