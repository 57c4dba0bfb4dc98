#include "platform/qt/windows/QtStoryboard.h"

#include "platform/model/Controls.h"
#include "platform/qt/text/TextFieldWidget.h"
#include "platform/qt/text/TextViewWidget.h"
#include "platform/qt/windows/MainWindow.h"
#include "tests/platform/qt/Scene.h"
#include "tests/platform/qt/application/EventLoop.h"

#include <QCheckBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

using platform::ButtonState;

class Content final : public platform::ContentController {
public:
    explicit Content(const platform::Coder& coder) : platform::ContentController(coder) {}

    void viewDidLoad() override { journal += 'l'; }
    void viewDidAppear() override { journal += 'a'; }
    std::function<void(platform::Sender)> actionForSelector(std::string_view selector) override {
        if (selector != "act:") {
            return {};
        }
        return [this](platform::Sender /*sender*/) { journal += 'x'; };
    }

    std::string journal;
    platform::Outlet<platform::TextField> field{outletTable(), "field"};
    platform::Outlet<platform::TextView> text{outletTable(), "text"};
    platform::Outlet<platform::ScrollView> scroller{outletTable(), "scroller"};
    platform::Outlet<platform::Button> box{outletTable(), "box"};
    platform::Outlet<platform::TextField> missing{outletTable(), "missing"};
    platform::Outlet<platform::TextField> other{outletTable(), "other"};
    platform::Outlet<platform::TextField> initial{outletTable(), "initial"};
    platform::Outlet<platform::TextView> initialText{outletTable(), "initialText"};
    platform::Outlet<platform::Button> initialBox{outletTable(), "initialBox"};
    platform::Outlet<platform::TextView> log{outletTable(), "log"};
};

/// A small window with more in it than can be seen at once.
void fillForm(QMainWindow& window) {
    auto form = std::make_unique<QWidget>();
    form->setLayout(std::make_unique<QVBoxLayout>().release());
    addNamed<platform::TextFieldWidget>(*form, "field");
    addNamed<QLabel>(*form, "fieldNote").setProperty("noteOf", "field");
    auto& copyField = addNamed<QPushButton>(*form, "copyField");
    copyField.setToolTip("Copies the field");
    copyField.setProperty("noteOf", "field");
    addNamed<platform::TextViewWidget>(*form, "text");
    addNamed<QCheckBox>(*form, "box");
    addNamed<QFrame>(*form, "other");
    addNamed<QPushButton>(*form, "button").setProperty("selector", "act:");
    addNamed<platform::TextFieldWidget>(*form, "initial").setPlainText("initial\nfield");
    addNamed<platform::TextViewWidget>(*form, "initialText").setPlainText("initial text");
    addNamed<QCheckBox>(*form, "initialBox").setChecked(true);
    addNamed<QLabel>(*form, "above").setMinimumHeight(600);
    auto& log = addNamed<platform::TextViewWidget>(*form, "log");
    log.setReadOnly(true);
    log.setMinimumHeight(80);
    addNamed<QLabel>(*form, "below").setMinimumHeight(600);
    addNamed<platform::TextFieldWidget>(*form, "statusLine");
    auto area = std::make_unique<QScrollArea>();
    area->setObjectName("scroller");
    area->setWidgetResizable(true);
    area->setWidget(form.release());
    window.setCentralWidget(area.release());
    addItem(*window.menuBar()->addMenu("Menu"), "act:");
    window.setGeometry(10, 20, 300, 200);
    window.setWindowTitle("Form");
}

class QtStoryboardTest : public testing::Test, protected Scene<Content> {
protected:
    QtStoryboardTest()
        : Scene([](const platform::Coder& coder) { return std::make_shared<Content>(coder); }, &fillForm) {}

    void letGo() {
        content.reset();
        controller.reset();
    }
};

TEST_F(QtStoryboardTest, hasTheVersionOfTheProgramAndNoOtherScenes) {
    EXPECT_EQ(bundle.storyboardWithName("main"), nullptr);
    EXPECT_EQ(bundle.mainStoryboard().instantiateControllerWithIdentifier("scene"), nullptr);
    const platform::Bundle& any = bundle;
    ASSERT_NE(any.infoDictionary(), nullptr);
    EXPECT_EQ(*any.infoDictionary(), (platform::Dictionary{{"CFBundleShortVersionString", "1.2.3"}}));
}

TEST_F(QtStoryboardTest, connectsOutletsToTheWidgetsOfTheirNamesOnly) {
    content->field->setStringValue("a");
    EXPECT_EQ(child<platform::TextFieldWidget>("field").text(), "a");
    content->text->setString("b\nc");
    EXPECT_EQ(child<platform::TextViewWidget>("text").content().string(), "b\nc");
    EXPECT_FALSE(child<QCheckBox>("box").isChecked());
    content->box->setState(ButtonState::on);
    EXPECT_TRUE(child<QCheckBox>("box").isChecked());
    child<QCheckBox>("box").click();
    EXPECT_EQ(content->box->state(), ButtonState::off);
    EXPECT_FALSE(child<QCheckBox>("box").isChecked());
    EXPECT_TRUE(content->scroller.isConnected());
    EXPECT_FALSE(content->missing.isConnected());
    EXPECT_FALSE(content->other.isConnected()) << "a widget of another kind";
}

TEST_F(QtStoryboardTest, beginsWithWhatTheFormHolds) {
    EXPECT_EQ(content->initial->stringValue(), "initial\nfield");
    EXPECT_EQ(child<platform::TextFieldWidget>("initial").text(), "initial\nfield");
    EXPECT_EQ(
        content->initialText->textStorage()->attributedString(),
        platform::AttributedString("initial text", {}));
    EXPECT_EQ(child<platform::TextViewWidget>("initialText").content().string(), "initial text");
    EXPECT_EQ(content->initialBox->state(), ButtonState::on);
    EXPECT_TRUE(child<QCheckBox>("initialBox").isChecked());
}

using QtStoryboardDeathTest = QtStoryboardTest;

TEST_F(QtStoryboardDeathTest, stopsWhereAnUnconnectedOutletIsUsed) {
    EXPECT_DEATH(content->missing->setStringValue(""), "outlet missing is not connected");
}

TEST_F(QtStoryboardTest, showsAndHidesWithTheModelAndIsRestored) {
    EXPECT_FALSE(widget->isVisible());
    controller->showWindow();
    EXPECT_TRUE(widget->isVisible());
    EXPECT_EQ(content->journal, "la");
    controller->showWindow();
    widget->showMinimized();
    controller->showWindow();
    EXPECT_FALSE(widget->isMinimized());
    EXPECT_EQ(content->journal, "la") << "it does not appear again";
    controller->window()->orderOut();
    EXPECT_FALSE(widget->isVisible());
    controller->showWindow();
    EXPECT_EQ(content->journal, "laa");
}

TEST_F(QtStoryboardTest, closesTheModelWhenTheUserClosesTheWindow) {
    controller->showWindow();
    int closings = 0;
    const auto closing = controller->window()->observeWillClose([&] { ++closings; });
    widget->close();
    EXPECT_EQ(closings, 1);
    EXPECT_FALSE(controller->window()->isVisible());
    EXPECT_FALSE(widget->isVisible());
}

TEST_F(QtStoryboardTest, showsTheTitleAsItIs) {
    for (const char* const title : {"notes.txt", "", "a[*]b", "[*][*]", "a & b"}) {
        controller->window()->setTitle(title);
        EXPECT_EQ(controller->window()->title(), title);
        EXPECT_FALSE(widget->isWindowModified());
        EXPECT_EQ(QString(widget->windowTitle()).replace("[*][*]", "[*]"), title);
    }
    controller->window()->setTitle("a\xe2\x80\xae"
                                   "b");
    EXPECT_FALSE(widget->windowTitle().contains(QChar(0x202E)));
}

TEST_F(QtStoryboardTest, givesTheModelTheFormsPlaceAndTitle) {
    const platform::Rect place = controller->window()->contentRect();
    EXPECT_EQ(place.width, 300);
    EXPECT_EQ(place.height, 200);
    EXPECT_EQ(controller->window()->styleMask(), 15U);
    EXPECT_EQ(controller->window()->title(), "Form");
    EXPECT_EQ(widget->windowTitle(), "Form");
}

TEST_F(QtStoryboardTest, sendsActionsToTheContent) {
    child<QPushButton>("button").click();
    EXPECT_EQ(content->journal, "x");
    for (QAction* const item : widget->findChildren<QAction*>()) {
        item->trigger();
    }
    EXPECT_EQ(content->journal, "xx") << "its menu item works before any menu was open";
}

TEST_F(QtStoryboardTest, removesTheWindowWithItsControllers) {
    controller->showWindow();
    const platform::Window* const window = controller->window().get();
    letGo();
    ASSERT_FALSE(widget.isNull()) << "it may be handling something";
    EXPECT_FALSE(widget->isVisible());
    EXPECT_EQ(shell.application.widgetOf(*window), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(widget.isNull());
}

TEST_F(QtStoryboardTest, survivesBeingRemovedByItsOwnClosing) {
    controller->showWindow();
    const auto closing = controller->window()->observeWillClose([this] { letGo(); });
    widget->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(widget.isNull());
}

TEST_F(QtStoryboardTest, doesNothingForWidgetsWhoseContentIsGone) {
    controller->showWindow();
    letGo();
    child<QPushButton>("button").click();
    child<QCheckBox>("box").click();
    child<platform::TextViewWidget>("text").insertPlainText("late");
    widget->close();
    SUCCEED();
}

TEST_F(QtStoryboardTest, showsTheStatusWhileThereIsOne) {
    auto& line = child<platform::TextFieldWidget>("statusLine");
    EXPECT_TRUE(line.isHidden());
    controller->window()->setStatus("Report not saved");
    EXPECT_FALSE(line.isHidden());
    EXPECT_EQ(line.text(), "Report not saved");
    controller->window()->setStatus("");
    EXPECT_TRUE(line.isHidden());
}

TEST_F(QtStoryboardTest, notifiesTheModelWhenTheUserTurnsToTheWindow) {
    controller->showWindow();
    int turns = 0;
    const auto attention = controller->window()->observeBecomeKey([&] { ++turns; });
    ASSERT_TRUE(eventually([&] { return widget->isActiveWindow(); }));
    QMainWindow other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(eventually([&] { return other.isActiveWindow(); }));
    const int before = turns;
    widget->activateWindow();
    EXPECT_TRUE(eventually([&] { return turns == before + 1; }));
}

TEST_F(QtStoryboardTest, showsTheNoteOfAFieldInItsLabelAndOnItsButton) {
    auto& label = child<QLabel>("fieldNote");
    auto& button = child<QPushButton>("copyField");
    EXPECT_TRUE(label.isHidden());
    EXPECT_EQ(button.toolTip(), "Copies the field");
    content->field->setNote("not <b>exact</b>");
    content->initial->setNote("of another field");
    EXPECT_FALSE(label.isHidden());
    EXPECT_EQ(label.text(), "not <b>exact</b>");
    EXPECT_TRUE(button.toolTip().startsWith("<")) << "marked up by the program, so that nothing else is";
    EXPECT_TRUE(button.toolTip().contains("Copies the field"));
    EXPECT_TRUE(button.toolTip().contains("not &lt;b&gt;exact&lt;/b&gt;"));
    content->field->setNote("");
    EXPECT_TRUE(label.isHidden());
    EXPECT_EQ(button.toolTip(), "Copies the field");
}

TEST_F(QtStoryboardTest, scrollsTheEndOfATextIntoView) {
    controller->showWindow();
    auto& log = child<platform::TextViewWidget>("log");
    content->log->setString(QString("line\n").repeated(200).toStdString() + "the end");
    QApplication::processEvents();
    const auto isEndSeen = [&] {
        const QPoint end = log.mapTo(widget, log.rect().bottomLeft());
        return log.verticalScrollBar()->value() == log.verticalScrollBar()->maximum()
               && widget->rect().contains(end);
    };
    EXPECT_FALSE(isEndSeen());
    content->log->scrollToEndOfDocument(nullptr);
    EXPECT_TRUE(isEndSeen());
}

} // namespace
} // namespace tolvane::tests
