#include "platform/qt/windows/TableCommands.h"

#include "platform/qt/application/MakeChild.h"
#include "platform/qt/windows/TableWidget.h"
#include "tests/platform/qt/QtTest.h"
#include "tests/platform/qt/windows/CountedRows.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tolvane::platform {
namespace {

using tests::CountedRows;

class TableCommandsTest : public testing::Test {
protected:
    TableCommandsTest() {
        rows->count = 2;
        rows->cell = "a\tb\n" + std::string(2'000, 'x');
        table.setRows(rows);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        QApplication::clipboard()->setText("before");
    }

    static std::string copied() { return QApplication::clipboard()->text().toStdString(); }

    QApplication& qtApplication = tests::application();
    std::shared_ptr<CountedRows> rows = std::make_shared<CountedRows>();
    QWidget window;
    Table table;
    TableWidget& tableWidget = makeChild<TableWidget>(&window);
    QPlainTextEdit& text = makeChild<QPlainTextEdit>(&window);
    QLineEdit& line = makeChild<QLineEdit>(&window);
    QPushButton& button = makeChild<QPushButton>(&window);
    TableCommands commands{window};
    TableMirror mirror{table, tableWidget};
    const std::string wholeCell = "a⟨TAB⟩b⟨LF⟩" + std::string(2'000, 'x');
};

TEST_F(TableCommandsTest, copyTheSelectedRowWithAllOfItsCells) {
    tableWidget.setFocus();
    EXPECT_FALSE(commands.isActionEnabled("copy:")) << "nothing is selected";
    commands.actionForSelector("copy:")(nullptr);
    EXPECT_EQ(copied(), "before");
    table.selectRow(1);
    EXPECT_TRUE(commands.isActionEnabled("copy:"));
    commands.actionForSelector("copy:")(nullptr);
    EXPECT_EQ(copied(), "1\t" + wholeCell);
}

TEST_F(TableCommandsTest, copyAllRowsInTheirOrder) {
    tableWidget.setFocus();
    EXPECT_FALSE(commands.isActionEnabled("selectAll:")) << "one row at a time";
    tableWidget.setSelectionMode(TableWidget::ExtendedSelection);
    EXPECT_TRUE(commands.isActionEnabled("selectAll:"));
    table.selectRow(1);
    commands.actionForSelector("selectAll:")(nullptr);
    commands.actionForSelector("copy:")(nullptr);
    EXPECT_EQ(copied(), "0\t" + wholeCell + "\n1\t" + wholeCell);
}

TEST_F(TableCommandsTest, areThoseOfWhatHadTheKeyboardLast) {
    text.setFocus();
    EXPECT_FALSE(commands.actionForSelector("copy:"));
    EXPECT_FALSE(commands.isActionEnabled("copy:"));
    tableWidget.setFocus();
    EXPECT_TRUE(commands.actionForSelector("copy:"));
    EXPECT_FALSE(commands.actionForSelector("paste:"));
    button.setFocus();
    EXPECT_TRUE(commands.actionForSelector("copy:")) << "a button has nothing to copy";
    line.setFocus();
    EXPECT_FALSE(commands.actionForSelector("copy:"));
}

TEST_F(TableCommandsTest, areNoneOfATableThatIsHidden) {
    tableWidget.setFocus();
    tableWidget.hide();
    EXPECT_FALSE(commands.actionForSelector("copy:"));
}

} // namespace
} // namespace tolvane::platform
