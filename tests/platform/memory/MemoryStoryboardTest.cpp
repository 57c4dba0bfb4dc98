#include "platform/memory/MemoryStoryboard.h"

#include "platform/Button.h"
#include "platform/ScrollView.h"
#include "tests/support/DetailsWindow.h"

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

namespace tolvane::tests {
namespace {

TEST(MemoryStoryboard, makesANewControllerEachTime) {
    platform::MemoryStoryboard storyboard;
    storyboard.addScene("scene", [](const platform::Coder& coder) {
        return std::make_shared<platform::ViewController>(coder);
    });
    const auto first = storyboard.instantiateControllerWithIdentifier("scene");
    const auto second = storyboard.instantiateControllerWithIdentifier("scene");
    ASSERT_TRUE(first);
    EXPECT_NE(first, second);
    EXPECT_EQ(std::dynamic_pointer_cast<platform::ViewController>(first)->nibName(), "scene");
}

TEST(MemoryStoryboard, answersNothingForAnUnknownScene) {
    EXPECT_EQ(platform::MemoryStoryboard().instantiateControllerWithIdentifier("scene"), nullptr);
    EXPECT_EQ(platform::MemoryBundle().storyboardWithName("Main"), nullptr);
}

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

TEST(MemoryStoryboard, givesEveryKindOfOutletAControlOfItsOwn) {
    struct Content final : platform::ViewController {
        using platform::ViewController::ViewController;
        platform::Outlet<platform::Button> first{outletTable(), "first"};
        platform::Outlet<platform::Button> second{outletTable(), "second"};
        platform::Outlet<platform::ScrollView> frame{outletTable(), "frame"};
    };
    Content content{platform::Coder{"scene"}};
    platform::connectOutlets(content);
    content.first->setState(platform::ButtonState::on);
    EXPECT_EQ(content.second->state(), platform::ButtonState::off);
    EXPECT_TRUE(content.frame.isConnected());
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

TEST(MemoryBundle, tellsAboutItselfWhatItWasGiven) {
    platform::MemoryBundle bundle;
    EXPECT_EQ(bundle.infoDictionary(), nullptr);
    bundle.setInfoDictionary({{"CFBundleShortVersionString", "1.2"}});
    ASSERT_NE(bundle.infoDictionary(), nullptr);
    EXPECT_EQ(*bundle.infoDictionary(), (platform::Dictionary{{"CFBundleShortVersionString", "1.2"}}));
}

} // namespace
} // namespace tolvane::tests
