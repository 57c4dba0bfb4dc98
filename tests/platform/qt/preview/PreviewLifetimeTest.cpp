#include "platform/qt/preview/QtPreviewPanel.h"
#include "platform/qt/text/ExactText.h"
#include "tests/platform/qt/Shell.h"
#include "tests/platform/qt/preview/PreviewTest.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tolvane::tests {
namespace {

class OneItem final : public platform::PreviewPanelDataSource {
public:
    explicit OneItem(platform::URL item) : item_(std::move(item)) {}
    std::size_t numberOfPreviewItemsInPreviewPanel(const platform::PreviewPanel& /*panel*/) override {
        return 1;
    }
    platform::URL previewPanel(const platform::PreviewPanel& /*panel*/, std::size_t /*index*/) override {
        return item_;
    }

private:
    platform::URL item_;
};

class PreviewLifetime : public PreviewTest {
protected:
    std::string text() { return platform::displayedText(*panel.window().text().document()).toStdString(); }

    Shell shell;
    platform::QtPreviewPanel panel{
        shell.application, [](QMainWindow&) {}, std::make_shared<CountedFiles>(), realDecoder()};
    std::shared_ptr<OneItem> source =
        std::make_shared<OneItem>(platform::URL::fileURLWithPath(folder.file("t", "Text.\n")));
};

TEST_F(PreviewLifetime, goesOnWhenWhoAskedForItIsGone) {
    panel.setDataSource(source);
    panel.makeKeyAndOrderFront(nullptr);
    ASSERT_TRUE(eventually([&] { return text() == "Text.\n"; }));
    source.reset();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(eventually([&] { return !panel.window().isActiveWindow(); }));
    panel.window().activateWindow();
    ASSERT_TRUE(eventually([&] { return panel.window().isActiveWindow(); }));
    QCoreApplication::processEvents();
    EXPECT_TRUE(panel.window().isVisible());
    EXPECT_EQ(text(), "Text.\n");
    EXPECT_TRUE(panel.window().windowTitle().startsWith("t — "))
        << panel.window().windowTitle().toStdString();
}

TEST_F(PreviewLifetime, keepsTheProgramUntilItIsClosed) {
    EXPECT_TRUE(panel.window().testAttribute(Qt::WA_QuitOnClose));
}

} // namespace
} // namespace tolvane::tests
