#include "platform/qt/text/TextViewWidget.h"
#include "platform/qt/windows/MainWindow.h"
#include "platform/qt/windows/Mirrors.h"
#include "tests/platform/qt/Shell.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QVBoxLayout>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::URL;
using testing::ElementsAre;
using testing::IsEmpty;

class DropOnText : public testing::Test {
protected:
    DropOnText() {
        auto content = std::make_unique<QWidget>();
        auto layout = std::make_unique<QVBoxLayout>();
        auto first = std::make_unique<platform::TextViewWidget>();
        auto second = std::make_unique<platform::TextViewWidget>();
        box = first.get();
        plainBox = second.get();
        layout->addWidget(first.release());
        layout->addWidget(second.release());
        content->setLayout(layout.release());
        window.setCentralWidget(content.release());
        mirror.emplace(view, *box);
        plainMirror.emplace(plainView, *plainBox);
        window.resize(300, 300);
        window.show();
    }

    /// As the toolkit does, to the innermost widget first.
    static void dropOn(platform::TextViewWidget& place) {
        QMimeData data;
        data.setData("text/uri-list", "file:///a%20b\r\n");
        const QPoint middle = place.viewport()->rect().center();
        const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
        QDragEnterEvent enter(middle, actions, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(place.viewport(), &enter);
        QDropEvent drop(middle, actions, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(place.viewport(), &drop);
        EXPECT_TRUE(drop.isAccepted());
        EXPECT_EQ(drop.dropAction(), Qt::CopyAction) << "nobody is told that the file was moved";
    }

    Shell shell;
    platform::MainWindow window{shell.application, "Test"};
    platform::TextView view;
    platform::TextView plainView;
    platform::TextViewWidget* box = nullptr;
    platform::TextViewWidget* plainBox = nullptr;
    std::optional<platform::TextViewMirror> mirror;
    std::optional<platform::TextViewMirror> plainMirror;
};

TEST_F(DropOnText, givesTheFilesToATextThatTakesThem) {
    std::vector<URL> taken;
    view.setFilesHandler([&](const std::vector<URL>& files) { taken = files; });
    dropOn(*box);
    EXPECT_THAT(taken, ElementsAre(URL::fileURLWithPath("/a b")));
    EXPECT_THAT(shell.opened, IsEmpty());
    EXPECT_EQ(view.string(), "");
}

TEST_F(DropOnText, opensTheFilesElsewhere) {
    std::vector<URL> taken;
    view.setFilesHandler([&](const std::vector<URL>& files) { taken = files; });
    dropOn(*plainBox);
    EXPECT_THAT(taken, IsEmpty());
    EXPECT_THAT(shell.opened, ElementsAre(URL::fileURLWithPath("/a b")));
}

TEST_F(DropOnText, opensTheFilesWhenTheModelIsGone) {
    view.setFilesHandler([](const std::vector<URL>& /*files*/) { FAIL(); });
    mirror.reset();
    dropOn(*box);
    EXPECT_THAT(shell.opened, ElementsAre(URL::fileURLWithPath("/a b")));
}

} // namespace
} // namespace tolvane::tests
