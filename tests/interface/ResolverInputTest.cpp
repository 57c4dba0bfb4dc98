// The resolver's input box as its window has it: what can be undone, and what can be dropped on it.
#include "platform/qt/text/TextFieldWidget.h"
#include "platform/qt/text/TextViewWidget.h"
#include "tests/interface/Scenes.h"
#include "tests/platform/qt/Drops.h"

#include <QAbstractButton>
#include <QMimeData>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tolvane::tests {
namespace {

using platform::URL;
using testing::ElementsAre;
using testing::IsEmpty;

class ResolverInput : public testing::Test, protected ResolverScene {
protected:
    ResolverInput() { scene.controller->showWindow(); }

    void press(const char* button) { scene.child<QAbstractButton>(button).click(); }

    void enter(const std::string& text) {
        QMimeData data;
        data.setText(QString::fromStdString(text));
        drop(data, *box.viewport(), {1, 1});
    }

    void openFile() {
        press("openFile");
        services.openPanels.newest()->inner.answer(
            platform::modalResponseOK, URL::fileURLWithPath("/data/a"));
    }

    std::string input() const { return scene.content->inputTextbox->string(); }
    std::string status() const { return scene.child<platform::TextFieldWidget>("statusLine").text(); }

    platform::TextViewWidget& box = scene.child<platform::TextViewWidget>("inputTextbox");
};

TEST_F(ResolverInput, canBeUndoneAfterAnalysingAndResolving) {
    enter("Ym9v a21h\ncms=");
    press("analyse");
    EXPECT_EQ(input(), "Ym9va21hcms=");
    press("resolve");
    press("analyse");
    box.undo();
    EXPECT_EQ(input(), "Ym9v a21h\ncms=");
    box.undo();
    EXPECT_EQ(input(), "");
    box.redo();
    box.redo();
    EXPECT_EQ(input(), "Ym9va21hcms=");
}

TEST_F(ResolverInput, canBeUndoneAfterAFileWithoutBookmark) {
    enter("Ym9v");
    services.bookmarks.stored = std::unexpected(platform::cocoaError(259, "Expected at byte 4: more."));
    openFile();
    EXPECT_EQ(input(), "Couldn't get Alias.");
    EXPECT_EQ(status(), "Expected at byte 4: more.");
    box.undo();
    EXPECT_EQ(input(), "Ym9v");
}

TEST_F(ResolverInput, canBeUndoneAfterAFileWithABookmark) {
    enter("Ym9v");
    openFile();
    EXPECT_EQ(input(), "c3RvcmVkIGJvb2ttYXJr");
    box.undo();
    EXPECT_EQ(input(), "Ym9v");
}

TEST_F(ResolverInput, readsAFileThatIsDroppedOnItAndOnNothingElse) {
    dropFiles("file:///data/alias\r\n", *box.viewport());
    EXPECT_EQ(input(), "c3RvcmVkIGJvb2ttYXJr");
    EXPECT_THAT(scene.shell.opened, IsEmpty());
    dropFiles("file:///data/alias\r\n", *scene.child<platform::TextViewWidget>("outputTextbox").viewport());
    dropFiles("file:///data/alias\r\n", scene.child<QWidget>("analyse"));
    EXPECT_THAT(
        scene.shell.opened,
        ElementsAre(URL::fileURLWithPath("/data/alias"), URL::fileURLWithPath("/data/alias")));
}

} // namespace
} // namespace tolvane::tests
