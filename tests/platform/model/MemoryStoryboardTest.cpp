#include "tests/support/MemoryStoryboard.h"

#include "tests/support/DetailsWindow.h"

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

namespace tolvane::tests {
namespace {

TEST(MemoryStoryboard, connectsEveryOutletOfAWindowsContent) {
    DetailsWindow details;
    const auto made = std::dynamic_pointer_cast<platform::WindowController>(
        details.bundle.storyboardWithName("Main")->instantiateControllerWithIdentifier(
            "Document Window Controller"));
    ASSERT_TRUE(made);
    const auto& content = made->contentViewController();
    for (const auto& entry : content->outlets().entries()) {
        EXPECT_TRUE(std::visit([](const auto* outlet) { return outlet->isConnected(); }, entry.outlet))
            << entry.name;
    }
    EXPECT_EQ(content->view().window(), made->window().get());
    EXPECT_EQ(made->window()->windowController(), made);
    EXPECT_EQ(made->window()->contentViewController(), content);
    EXPECT_FALSE(made->window()->isVisible());
}

TEST(MemoryStoryboard, putsContentIntoAWindowOfTheSceneWhereItHasOne) {
    platform::MemoryStoryboard storyboard;
    const auto content = [](const platform::Coder& coder) {
        return std::make_shared<platform::ViewController>(coder);
    };
    storyboard.addWindowScene("own", content, [] {
        return platform::Window::initWithContentRect({0, 0, 3, 4}, 1, platform::BackingStore::buffered, true);
    });
    storyboard.addWindowScene("plain", content);
    const auto windowOf = [&](std::string_view scene) {
        return std::dynamic_pointer_cast<platform::WindowController>(
                   storyboard.instantiateControllerWithIdentifier(scene))
            ->window();
    };
    EXPECT_EQ(windowOf("own")->contentRect(), (platform::Rect{0, 0, 3, 4}));
    EXPECT_NE(windowOf("own"), windowOf("own"));
    EXPECT_EQ(windowOf("plain")->contentRect(), platform::Rect());
}

TEST(MemoryStoryboard, leavesConnectedOutletsAlone) {
    DetailsWindow details;
    const auto controller = details::ViewController::initWithCoder({}, details.detailsSources());
    platform::TextField own;
    controller->pathTextbox.connect(own);
    platform::connectOutlets(*controller);
    controller->pathTextbox->setStringValue("mine");
    EXPECT_EQ(own.stringValue(), "mine");
    EXPECT_TRUE(controller->inodeText.isConnected());
}

} // namespace
} // namespace tolvane::tests
