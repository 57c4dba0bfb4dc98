#include "platform/model/Window.h"
#include "platform/qt/panels/QtPanels.h"
#include "tests/platform/qt/panels/DialogTest.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace tolvane::tests {
namespace {

class OpenPanelOfClosedWindow : public DialogTest {
protected:
    /// Shows a panel that only its handler keeps alive, as the resolver does.
    void open() {
        const auto panel = panels.openPanel();
        watched = panel;
        panel->beginSheetModalForWindow(
            *window, [this, panel, kept = token](int response) { responses.push_back(response); });
    }

    std::shared_ptr<platform::Window> window =
        platform::Window::initWithContentRect({}, {}, platform::BackingStore::buffered, true);
    QWidget widget;
    platform::QtOpenPanels panels{[this](platform::Window& /*shown*/) { return &widget; }};
    std::weak_ptr<platform::OpenPanel> watched;
    std::shared_ptr<int> token = std::make_shared<int>();
    std::vector<int> responses;
};

TEST_F(OpenPanelOfClosedWindow, goesWithItsWindowUnanswered) {
    window->makeKeyAndOrderFront();
    open();
    ASSERT_NE(shownDialog<platform::OpenFileDialog>(), nullptr);
    window->close();
    EXPECT_EQ(shownDialog<platform::OpenFileDialog>(), nullptr);
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(token.use_count(), 1) << "the handler keeps nothing any more";
    EXPECT_EQ(responses, std::vector<int>{});
}

TEST_F(OpenPanelOfClosedWindow, isOutOfTheWayOnceAnswered) {
    window->makeKeyAndOrderFront();
    open();
    shownDialog<platform::OpenFileDialog>()->reject();
    window->close();
    EXPECT_EQ(responses, std::vector<int>{0});
}

} // namespace
} // namespace tolvane::tests
