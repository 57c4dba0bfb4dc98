#include "platform/qt/windows/TableWidget.h"

#include "platform/qt/application/MakeChild.h"
#include "tests/platform/qt/QtTest.h"
#include "tests/platform/qt/windows/CountedRows.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

using tests::CountedRows;

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

} // namespace
} // namespace tolvane::platform
