#include "resolver/TRWindow.h"

#include <gtest/gtest.h>

#include <memory>
#include <tuple>

namespace tolvane::resolver {
namespace {

template <typename WindowClass>
class WindowClassesTest : public testing::Test {};

using WindowClasses = testing::Types<TRWindow, TCWindow>;
TYPED_TEST_SUITE(WindowClassesTest, WindowClasses);

TYPED_TEST(WindowClassesTest, passEverythingOnUnchanged) {
    const platform::Rect place{-1, 2.5, 300, 400};
    for (const auto& [mask, backing, defer] :
         {std::tuple{platform::WindowStyleMask{0}, platform::BackingStore::retained, true},
          {platform::windowStyleMaskTitled | platform::windowStyleMaskClosable,
           platform::BackingStore::buffered, true},
          {~platform::WindowStyleMask{0}, platform::BackingStore::buffered, false}}) {
        const std::shared_ptr<platform::Window> window =
            TypeParam::initWithContentRect(place, mask, backing, defer);
        EXPECT_NE(std::dynamic_pointer_cast<TypeParam>(window), nullptr);
        EXPECT_FALSE(window->isVisible());
        EXPECT_EQ(window->contentRect(), place);
        EXPECT_EQ(window->styleMask(), mask);
        EXPECT_EQ(window->backing(), backing);
        EXPECT_EQ(window->isDeferred(), defer);
    }
}

TEST(WindowClasses, areTwo) {
    const std::shared_ptr<platform::Window> window =
        TRWindow::initWithContentRect({}, 0, platform::BackingStore::buffered, false);
    EXPECT_EQ(std::dynamic_pointer_cast<TCWindow>(window), nullptr);
    EXPECT_EQ(sizeof(TRWindow), sizeof(platform::Window)) << "neither adds a field";
    EXPECT_EQ(sizeof(TCWindow), sizeof(platform::Window));
}

} // namespace
} // namespace tolvane::resolver
