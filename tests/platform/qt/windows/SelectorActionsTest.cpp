#include "platform/qt/windows/SelectorActions.h"

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

    QApplication& toolkit = application();
    QMainWindow window;
    QMenu& menu = *window.menuBar()->addMenu("Menu");
    Recorder target{{"known:", "other:"}};
};

TEST_F(SelectorActionsTest, sendWhatTheItemNames) {
    QAction& known = addItem(menu, "known:");
    QAction& other = addItem(menu, "other:");
    connect();
    known.trigger();
    other.trigger();
    EXPECT_EQ(target.journal, "known:other:");
}

TEST_F(SelectorActionsTest, sendWhatAButtonNames) {
    QPushButton button(&window);
    button.setProperty("selector", "known:");
    connect();
    button.click();
    EXPECT_EQ(target.journal, "known:");
}

TEST_F(SelectorActionsTest, disableAnItemThatNobodyAnswers) {
    const QAction& unknown = addItem(menu, "unknown:");
    const QAction& known = addItem(menu, "known:");
    connect();
    EXPECT_FALSE(unknown.isEnabled());
    EXPECT_TRUE(known.isEnabled());
}

TEST_F(SelectorActionsTest, offerWhatIsPossibleWhileTheMenuIsOpen) {
    const QAction& known = addItem(menu, "known:");
    const QAction& unknown = addItem(menu, "unknown:");
    connect();
    target.enabled = false;
    emit menu.aboutToShow();
    EXPECT_FALSE(known.isEnabled());
    emit menu.aboutToHide();
    EXPECT_TRUE(known.isEnabled()) << "its key works again";
    EXPECT_FALSE(unknown.isEnabled());
}

TEST_F(SelectorActionsTest, disableAButtonThatWouldDoNothing) {
    const QPushButton plain(&window);
    QPushButton known(&window);
    known.setProperty("selector", "known:");
    QPushButton unknown(&window);
    unknown.setProperty("selector", "unknown:");
    target.enabled = false;
    connect();
    EXPECT_FALSE(known.isEnabled());
    EXPECT_FALSE(unknown.isEnabled());
    EXPECT_TRUE(plain.isEnabled());
}

TEST_F(SelectorActionsTest, offerAButtonOnceAnActionHasMadeItPossible) {
    QAction& other = addItem(menu, "other:");
    QPushButton known(&window);
    known.setProperty("selector", "known:");
    QPushButton enabler(&window);
    enabler.setProperty("selector", "other:");
    connect();
    EXPECT_TRUE(known.isEnabled());
    target.enabled = false;
    other.trigger();
    EXPECT_FALSE(known.isEnabled());
    target.enabled = true;
    other.trigger();
    EXPECT_TRUE(known.isEnabled());
    target.enabled = false;
    emit enabler.clicked();
    EXPECT_FALSE(known.isEnabled());
}

TEST_F(SelectorActionsTest, offerAButtonOnceATextHasMadeItPossible) {
    QPushButton known(&window);
    known.setProperty("selector", "known:");
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
    auto owned = std::make_unique<QMainWindow>();
    QMenu& ownMenu = *owned->menuBar()->addMenu("Menu");
    const QPointer<QAction> item = &addItem(ownMenu, "close:");
    QPushButton& button = *std::make_unique<QPushButton>(owned.get()).release();
    button.setProperty("selector", "close:");
    class Closer final : public platform::ActionTarget {
    public:
        explicit Closer(std::unique_ptr<QMainWindow>& window) : window_(window) {}
        std::function<void(platform::Sender)> actionForSelector(std::string_view /*selector*/) override {
            return [this](platform::Sender /*sender*/) { window_.reset(); };
        }

    private:
        std::unique_ptr<QMainWindow>& window_;
    } closer(owned);
    platform::connectSelectors(*owned, [&](std::string_view) { return &closer; });
    item->trigger();
    EXPECT_EQ(owned, nullptr);
    EXPECT_EQ(item, nullptr);
}

TEST_F(SelectorActionsTest, leaveItemsWithoutSelectorAlone) {
    const QAction& plain = *menu.addAction("plain");
    connect();
    emit menu.aboutToShow();
    EXPECT_TRUE(plain.isEnabled());
    EXPECT_TRUE(platform::selectorOf(plain).isEmpty());
}

TEST_F(SelectorActionsTest, doNothingWhenTheResponderIsGoneByThen) {
    QAction& known = addItem(menu, "known:");
    bool gone = false;
    platform::connectSelectors(window, [&](std::string_view) { return gone ? nullptr : &target; });
    gone = true;
    known.trigger();
    EXPECT_EQ(target.journal, "");
}

} // namespace
} // namespace tolvane::tests
