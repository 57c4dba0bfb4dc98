#include "platform/macos/desktop/MacPreviewPanels.h"

#include "tests/platform/macos/substitute/Desktop.h"
#include "tests/platform/macos/substitute/Objects.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane {
namespace {

using namespace platform;
using namespace tests::macos;
using testing::ElementsAre;

class OneItem final : public PreviewPanelDataSource, public PreviewPanelDelegate {
public:
    std::size_t numberOfPreviewItemsInPreviewPanel(const PreviewPanel& /*panel*/) override { return 1; }
    URL previewPanel(const PreviewPanel& /*panel*/, std::size_t index) override {
        return URL::fileURLWithPath("/folder/" + std::to_string(index));
    }
};

class MacPreviewPanelsTest : public testing::Test {
protected:
    /// As the resolver's controller drives it.
    void show() {
        const auto panel = panels->sharedPreviewPanel();
        ASSERT_TRUE(panel);
        panel->setDelegate(controller);
        panel->setDataSource(controller);
        panel->makeKeyAndOrderFront(nullptr);
    }

    Substitute substitute;
    DesktopSubstitute desktop;
    std::shared_ptr<OneItem> controller = std::make_shared<OneItem>();
    std::unique_ptr<MacPreviewPanels> panels = std::make_unique<MacPreviewPanels>();
};

TEST_F(MacPreviewPanelsTest, drivesTheSharedPanelInOrder) {
    show();
    EXPECT_THAT(substitute.calls, ElementsAre("set delegate", "set data source", "make key"));
    EXPECT_NE(desktop.delegate, nullptr);
    EXPECT_EQ(desktop.dataSource, desktop.delegate);
}

TEST_F(MacPreviewPanelsTest, answersFromTheDataSource) {
    show();
    EXPECT_EQ(desktop.items.count(), 1U);
    const CFURLRef item = desktop.items.copyURL(3);
    EXPECT_EQ(contentOf<std::string>(item, Kind::url), "file:///folder/3");
    release(item);
}

TEST_F(MacPreviewPanelsTest, hasNoItemsOnceTheDataSourceIsGone) {
    show();
    controller.reset();
    EXPECT_EQ(desktop.items.count(), 0U);
    EXPECT_EQ(desktop.items.copyURL(0), nullptr);
}

TEST_F(MacPreviewPanelsTest, hasNoItemWhereTheSystemMakesNoURL) {
    show();
    substitute.failCall(0);
    EXPECT_EQ(desktop.items.copyURL(0), nullptr);
}

TEST_F(MacPreviewPanelsTest, isOnePanelForAll) {
    EXPECT_EQ(panels->sharedPreviewPanel(), panels->sharedPreviewPanel());
}

TEST_F(MacPreviewPanelsTest, isNoneWhereTheSystemHasNone) {
    desktop.hasPanel = false;
    EXPECT_EQ(panels->sharedPreviewPanel(), nullptr);
}

TEST_F(MacPreviewPanelsTest, takesNoControllerThatIsGone) {
    const auto panel = panels->sharedPreviewPanel();
    panel->setDelegate({});
    panel->setDataSource({});
    EXPECT_EQ(desktop.delegate, nullptr);
    EXPECT_EQ(desktop.dataSource, nullptr);
}

TEST_F(MacPreviewPanelsTest, leavesNothingInThePanelAtTheEnd) {
    show();
    panels.reset();
    EXPECT_EQ(desktop.delegate, nullptr);
    EXPECT_EQ(desktop.dataSource, nullptr);
    EXPECT_EQ(livingObjects(), 0U);
}

} // namespace
} // namespace tolvane
