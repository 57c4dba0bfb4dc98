#include "platform/qt/windows/TableWidget.h"

#include "platform/qt/application/MakeChild.h"
#include "platform/qt/windows/TableCommands.h"
#include "tests/platform/qt/QtTest.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
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

/// Numbered rows whose second column is text; counts how many cells are made.
class CountedRows final : public TableRows {
public:
    const std::vector<TableColumn>& columns() const override {
        static const std::vector<TableColumn> columns{{"Number", 8, true}, {"Text", 20, false}};
        return columns;
    }
    std::size_t rowCount() const override { return count; }
    std::string text(std::size_t row, std::size_t column) const override {
        ++made;
        return column == 0 ? std::to_string(row) : cell;
    }
    bool isMarked(std::size_t row, std::size_t /*column*/) const override { return row == 1; }

    std::size_t count = 0;
    std::string cell = "text";
    mutable std::size_t made = 0;
};

class TableWidgetTest : public testing::Test {
protected:
    TableWidgetTest() { tests::application(); }

    void show(std::size_t count) {
        rows->count = count;
        table.setRows(rows);
        widget.resize(400, 300);
        widget.show();
    }

    QVariant at(int row, int column, int role = Qt::DisplayRole) {
        return widget.shownModel().data(widget.shownModel().index(row, column), role);
    }

    Table table;
    TableWidget widget;
    std::shared_ptr<CountedRows> rows = std::make_shared<CountedRows>();
    std::unique_ptr<TableMirror> mirror = std::make_unique<TableMirror>(table, widget);
};

TEST_F(TableWidgetTest, showsRowsUnderTheirHeads) {
    show(3);
    EXPECT_EQ(widget.model()->rowCount(), 3);
    EXPECT_EQ(widget.model()->headerData(1, Qt::Horizontal).toString(), "Text");
    EXPECT_EQ(at(2, 0).toString(), "2");
    EXPECT_EQ(at(2, 1).toString(), "text");
    EXPECT_TRUE((at(0, 0, Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight) != 0);
}

TEST_F(TableWidgetTest, writesOutHiddenCharactersAndKeepsMarkupAsText) {
    show(1);
    rows->cell = "a\n\u202E<b>\xFF";
    EXPECT_EQ(at(0, 1).toString(), "a⟨LF⟩⟨U+202E⟩<b>\uFFFD");
    EXPECT_TRUE(at(0, 1, Qt::ToolTipRole).toString().contains("&lt;b&gt;"));
}

TEST_F(TableWidgetTest, cutsVeryLongTextsInTheirMiddle) {
    show(1);
    rows->cell = "/front/" + std::string(100'000, 'x') + "/end";
    const QString text = at(0, 1).toString();
    EXPECT_LE(text.size(), 1'000);
    EXPECT_TRUE(text.startsWith("/front/") && text.endsWith("/end"));
}

TEST_F(TableWidgetTest, makesMarkedCellsBold) {
    show(2);
    EXPECT_FALSE(at(0, 1, Qt::FontRole).isValid());
    EXPECT_TRUE(at(1, 1, Qt::FontRole).value<QFont>().bold());
}

TEST_F(TableWidgetTest, makesOnlyCellsThatAreSeen) {
    show(100'000);
    QTest::qWait(0);
    EXPECT_LT(rows->made, 1'000U);
    EXPECT_GT(rows->made, 0U);
    table.rowsChanged(std::nullopt);
    QTest::qWait(0);
    EXPECT_LT(rows->made, 2'000U);
}

TEST_F(TableWidgetTest, selectsInBothDirections) {
    show(3);
    table.selectRow(2);
    EXPECT_EQ(widget.currentIndex().row(), 2);
    EXPECT_TRUE(widget.selectionModel()->isRowSelected(2));
    widget.setFocus();
    QTest::keyClick(&widget, Qt::Key_Up);
    EXPECT_EQ(table.selectedRow(), 1U);
    table.selectRow(std::nullopt);
    EXPECT_FALSE(widget.currentIndex().isValid());
}

TEST_F(TableWidgetTest, keepsTheSelectionThatComesWithOtherRows) {
    show(3);
    table.selectRow(2);
    rows->count = 1;
    table.rowsChanged(0);
    EXPECT_EQ(widget.model()->rowCount(), 1);
    EXPECT_EQ(widget.currentIndex().row(), 0);
    EXPECT_EQ(table.selectedRow(), 0U);
    table.rowsChanged(std::nullopt);
    EXPECT_FALSE(widget.currentIndex().isValid());
    EXPECT_EQ(table.selectedRow(), std::nullopt);
}

TEST_F(TableWidgetTest, takesTheKeyboardOnlyWhereItIsShown) {
    QWidget window;
    TableWidget shown(&window);
    TableWidget hidden(&window);
    hidden.hide();
    const TableMirror first(table, shown);
    const TableMirror second(table, hidden);
    EXPECT_EQ(window.focusWidget(), &shown);
}

TEST_F(TableWidgetTest, ordersByItsHeads) {
    TableOrder order{9, true};
    table.setOrderHandler([&order](TableOrder wanted) { order = wanted; });
    show(3);
    widget.sortByColumn(1, Qt::DescendingOrder);
    EXPECT_EQ(order, (TableOrder{1, false}));
    widget.sortByColumn(0, Qt::AscendingOrder);
    EXPECT_EQ(order, (TableOrder{0, true}));
}

TEST_F(TableWidgetTest, opensARowWithReturn) {
    std::vector<std::size_t> opened;
    table.setOpenHandler([&opened](std::size_t row) { opened.push_back(row); });
    show(3);
    table.selectRow(1);
    widget.setFocus();
    QTest::keyClick(&widget, Qt::Key_Return);
    EXPECT_EQ(opened, std::vector<std::size_t>{1});
}

TEST_F(TableWidgetTest, leavesTheTabKeyToTheWindow) {
    EXPECT_FALSE(widget.tabKeyNavigation());
    EXPECT_TRUE((widget.focusPolicy() & Qt::TabFocus) != 0);
}

TEST_F(TableWidgetTest, isEmptyOnceItsMirrorIsGone) {
    show(3);
    mirror.reset();
    EXPECT_EQ(widget.model()->rowCount(), 0);
    table.selectRow(1);
    table.rowsChanged(0);
    table.cellsChanged();
    EXPECT_EQ(widget.model()->rowCount(), 0);
}

TEST_F(TableWidgetTest, mayBeDestroyedBeforeItsMirror) {
    auto other = std::make_unique<TableWidget>();
    const TableMirror otherMirror(table, *other);
    other.reset();
    show(1);
    table.selectRow(0);
    table.cellsChanged();
    EXPECT_EQ(table.selectedRow(), 0U);
}

TEST(TableWidgetHiddenWithoutRows, isSeenWhileThereAreSomeAndLeavesTheKeyboardAlone) {
    tests::application();
    QWidget window;
    auto& text = makeChild<QLineEdit>(&window);
    auto& widget = makeChild<TableWidget>(&window);
    widget.setProperty("hiddenWithoutRows", true);
    widget.hide();
    text.setFocus();
    Table table;
    const TableMirror mirror(table, widget);
    window.show();
    EXPECT_FALSE(widget.isVisible());
    EXPECT_EQ(window.focusWidget(), &text);
    table.setRows(std::make_shared<CountedRows>());
    EXPECT_TRUE(widget.isVisible()) << "a table may be empty";
    EXPECT_EQ(window.focusWidget(), &text);
    table.setRows(nullptr);
    EXPECT_FALSE(widget.isVisible());
}

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
