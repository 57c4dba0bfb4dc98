#include "platform/qt/windows/SelectorActions.h"

#include "platform/qt/application/MakeChild.h"
#include "tests/platform/qt/Shell.h"

#include <QPointer>
#include <gtest/gtest.h>

#include <memory>

namespace tolvane::tests {
namespace {

class SelectorActionsTest : public testing::Test {
protected:
    void connect() {
        platform::connectSelectors(window, [this](std::string_view selector) -> platform::ActionTarget* {
            return target.actionForSelector(selector) ? &target : nullptr;
        });
    }

    QPushButton& addButton(const char* selector) {
        auto& button = platform::makeChild<QPushButton>(&window);
        button.setProperty("selector", selector);
        return button;
    }

    QApplication& toolkit = application();
    QMainWindow window;
    QMenu& menu = *window.menuBar()->addMenu("Menu");
    Recorder target{{"known:", "other:"}};
};

TEST_F(SelectorActionsTest, sendWhatItemsAndButtonsName) {
    QAction& known = addItem(menu, "known:");
    QAction& other = addItem(menu, "other:");
    QPushButton& button = addButton("known:");
    connect();
    known.trigger();
    other.trigger();
    button.click();
    EXPECT_EQ(target.journal, "known:other:known:");
}

TEST_F(SelectorActionsTest, offerItemsWithATargetAndInAnOpenMenuOnlyWhatIsPossible) {
    const QAction& unknown = addItem(menu, "unknown:");
    const QAction& known = addItem(menu, "known:");
    const QAction& plain = *menu.addAction("plain");
    connect();
    EXPECT_FALSE(unknown.isEnabled());
    EXPECT_TRUE(known.isEnabled());
    target.enabled = false;
    emit menu.aboutToShow();
    EXPECT_FALSE(known.isEnabled());
    EXPECT_TRUE(plain.isEnabled()) << "it has no selector";
    emit menu.aboutToHide();
    EXPECT_TRUE(known.isEnabled()) << "its key works again";
    EXPECT_FALSE(unknown.isEnabled());
}

TEST_F(SelectorActionsTest, offerAButtonWhileItWouldDoSomething) {
    const QPushButton plain(&window);
    QAction& other = addItem(menu, "other:");
    const QPushButton& known = addButton("known:");
    const QPushButton& unknown = addButton("unknown:");
    QPushButton& disabler = addButton("other:");
    target.enabled = false;
    connect();
    EXPECT_FALSE(known.isEnabled());
    EXPECT_FALSE(unknown.isEnabled());
    EXPECT_TRUE(plain.isEnabled());
    target.enabled = true;
    other.trigger();
    EXPECT_TRUE(known.isEnabled()) << "a menu's action has made it possible";
    target.enabled = false;
    emit disabler.clicked();
    EXPECT_FALSE(known.isEnabled()) << "a button's action has made it impossible";
}

TEST_F(SelectorActionsTest, offerAButtonOnceATextHasMadeItPossible) {
    QPushButton& known = addButton("known:");
    QPlainTextEdit text(&window);
    target.enabled = false;
    connect();
    EXPECT_FALSE(known.isEnabled());
    text.setPlainText("Something to act on.");
    target.enabled = true;
    QCoreApplication::processEvents();
    EXPECT_TRUE(known.isEnabled()) << "asked once all texts are there";
    target.enabled = false;
    text.clear();
    QCoreApplication::processEvents();
    EXPECT_FALSE(known.isEnabled());
}

TEST_F(SelectorActionsTest, surviveTheEndOfTheirWindow) {
    struct Closer final : platform::ActionTarget {
        std::function<void(platform::Sender)> actionForSelector(std::string_view /*selector*/) override {
            return [this](platform::Sender /*sender*/) { window.reset(); };
        }
        std::unique_ptr<QMainWindow> window = std::make_unique<QMainWindow>();
    } closer;
    const QPointer<QAction> item = &addItem(*closer.window->menuBar()->addMenu("Menu"), "close:");
    platform::makeChild<QPushButton>(closer.window.get()).setProperty("selector", "close:");
    platform::connectSelectors(*closer.window, [&](std::string_view) { return &closer; });
    item->trigger();
    EXPECT_EQ(closer.window, nullptr);
    EXPECT_EQ(item, nullptr);
}

} // namespace
} // namespace tolvane::tests
