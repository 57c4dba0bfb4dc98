#include "platform/qt/windows/TableCommands.h"

#include "platform/qt/windows/TableWidget.h"
#include "tests/platform/qt/QtTest.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

class TwoRows final : public TableRows {
public:
    const std::vector<TableColumn>& columns() const override {
        static const std::vector<TableColumn> columns{{"First", 8, false}, {"Second", 8, false}};
        return columns;
    }
    std::size_t rowCount() const override { return 2; }
    std::string text(std::size_t row, std::size_t column) const override {
        return column == 0 ? "row " + std::to_string(row) : "a\tb\n" + std::string(2'000, 'x');
    }
    bool isMarked(std::size_t /*row*/, std::size_t /*column*/) const override { return false; }
};

class TableCommandsTest : public testing::Test {
protected:
    TableCommandsTest() {
        for (QWidget* const widget : std::vector<QWidget*>{&tableWidget, &text, &line, &button}) {
            widget->setParent(&window);
        }
        table.setRows(std::make_shared<TwoRows>());
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        QApplication::clipboard()->setText("before");
    }
    // The window's children outlive it otherwise.
    ~TableCommandsTest() override {
        for (QWidget* const widget : std::vector<QWidget*>{&tableWidget, &text, &line, &button}) {
            widget->setParent(nullptr);
        }
    }
    TableCommandsTest(const TableCommandsTest&) = delete;
    TableCommandsTest& operator=(const TableCommandsTest&) = delete;

    static std::string copied() { return QApplication::clipboard()->text().toStdString(); }

    QApplication& qtApplication = tests::application();
    QWidget window;
    Table table;
    TableWidget tableWidget;
    QPlainTextEdit text;
    QLineEdit line;
    QPushButton button;
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
    EXPECT_EQ(copied(), "row 1\t" + wholeCell);
}

TEST_F(TableCommandsTest, copyAllRowsInTheirOrder) {
    tableWidget.setFocus();
    EXPECT_FALSE(commands.isActionEnabled("selectAll:")) << "one row at a time";
    tableWidget.setSelectionMode(TableWidget::ExtendedSelection);
    EXPECT_TRUE(commands.isActionEnabled("selectAll:"));
    table.selectRow(1);
    commands.actionForSelector("selectAll:")(nullptr);
    commands.actionForSelector("copy:")(nullptr);
    EXPECT_EQ(copied(), "row 0\t" + wholeCell + "\nrow 1\t" + wholeCell);
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
