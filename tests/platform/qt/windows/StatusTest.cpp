// What a window says beside what it shows: its status, notes on its fields, and the end of a text.
#include "platform/model/Controls.h"
#include "platform/qt/text/TextFieldWidget.h"
#include "platform/qt/text/TextViewWidget.h"
#include "platform/qt/windows/QtStoryboard.h"
#include "tests/platform/qt/Scene.h"
#include "tests/platform/qt/application/EventLoop.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tolvane::tests {
namespace {

class NotedContent final : public platform::ContentController {
public:
    explicit NotedContent(const platform::Coder& coder) : platform::ContentController(coder) {}

    platform::Outlet<platform::TextField> name{outletTable(), "name"};
    platform::Outlet<platform::TextField> other{outletTable(), "other"};
    platform::Outlet<platform::TextView> log{outletTable(), "log"};
};

/// As small as can be, with more in it than can be seen at once.
void fillNotedForm(QMainWindow& window) {
    auto form = std::make_unique<QWidget>();
    form->setLayout(std::make_unique<QVBoxLayout>().release());
    addNamed<platform::TextFieldWidget>(*form, "name");
    addNamed<QLabel>(*form, "nameNote").setProperty("noteOf", "name");
    auto& button = addNamed<QPushButton>(*form, "copyName");
    button.setToolTip("Copies the name");
    button.setProperty("noteOf", "name");
    addNamed<platform::TextFieldWidget>(*form, "other");
    addNamed<QLabel>(*form, "gap").setMinimumHeight(600);
    auto& log = addNamed<platform::TextViewWidget>(*form, "log");
    log.setReadOnly(true);
    log.setMinimumHeight(80);
    addNamed<QLabel>(*form, "below").setMinimumHeight(600);
    addNamed<platform::TextFieldWidget>(*form, "statusLine");
    auto area = std::make_unique<QScrollArea>();
    area->setWidgetResizable(true);
    area->setWidget(form.release());
    window.setCentralWidget(area.release());
    window.resize(300, 200);
}

class StatusTest : public testing::Test, protected Scene<NotedContent> {
protected:
    StatusTest()
        : Scene(
              [](const platform::Coder& coder) { return std::make_shared<NotedContent>(coder); },
              &fillNotedForm) {
        controller->showWindow();
    }
};

TEST_F(StatusTest, isShownWhileThereIsOne) {
    auto& line = child<platform::TextFieldWidget>("statusLine");
    EXPECT_TRUE(line.isHidden());
    controller->window()->setStatus("Report not saved");
    EXPECT_FALSE(line.isHidden());
    EXPECT_EQ(line.text(), "Report not saved");
    controller->window()->setStatus("");
    EXPECT_TRUE(line.isHidden());
}

TEST_F(StatusTest, isAskedForWhenTheUserTurnsToTheWindow) {
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

TEST_F(StatusTest, hasTheNoteOfAFieldInItsLabelAndOnItsButton) {
    auto& label = child<QLabel>("nameNote");
    auto& button = child<QPushButton>("copyName");
    EXPECT_TRUE(label.isHidden());
    EXPECT_EQ(button.toolTip(), "Copies the name");
    content->name->setNote("not <b>exact</b>");
    content->other->setNote("of another field");
    EXPECT_FALSE(label.isHidden());
    EXPECT_EQ(label.text(), "not <b>exact</b>");
    EXPECT_TRUE(button.toolTip().startsWith("<")) << "marked up by the program, so that nothing else is";
    EXPECT_TRUE(button.toolTip().contains("Copies the name"));
    EXPECT_TRUE(button.toolTip().contains("not &lt;b&gt;exact&lt;/b&gt;"));
    content->name->setNote("");
    EXPECT_TRUE(label.isHidden());
    EXPECT_EQ(button.toolTip(), "Copies the name");
}

TEST_F(StatusTest, comesWithTheEndOfATextScrolledIntoView) {
    auto& log = child<platform::TextViewWidget>("log");
    std::string lines;
    for (int i = 0; i < 200; ++i) {
        lines += "line\n";
    }
    content->log->setString(lines + "the end");
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
