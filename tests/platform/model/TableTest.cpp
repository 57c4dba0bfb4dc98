#include "platform/model/Table.h"

#include <gtest/gtest.h>

namespace tolvane::platform {
namespace {

TEST(Table, notifiesAboutAnotherSelectionOnly) {
    Table table;
    int notified = 0;
    const Subscription subscription = table.observeSelection([&notified] { ++notified; });
    table.selectRow(1);
    table.selectRow(1);
    EXPECT_EQ(notified, 1);
    EXPECT_EQ(table.selectedRow(), 1U);
    table.selectRow(std::nullopt);
    EXPECT_EQ(notified, 2);
}

TEST(Table, forgetsTheSelectionWithItsRows) {
    Table table;
    table.selectRow(1);
    int notified = 0;
    const Subscription subscription = table.observeRows([&notified] { ++notified; });
    table.setRows(nullptr);
    EXPECT_EQ(table.selectedRow(), std::nullopt);
    table.rowsChanged(2);
    EXPECT_EQ(table.selectedRow(), 2U);
    EXPECT_EQ(notified, 2);
}

TEST(Table, passesOnWhatTheUserWants) {
    Table table;
    table.requestOrder({1, true});
    table.openRow(3);
    TableOrder order;
    std::size_t opened = 0;
    table.setOrderHandler([&order](TableOrder wanted) { order = wanted; });
    table.setOpenHandler([&opened](std::size_t row) { opened = row; });
    table.requestOrder({1, false});
    table.openRow(3);
    EXPECT_EQ(order, (TableOrder{1, false}));
    EXPECT_EQ(opened, 3U);
}

} // namespace
} // namespace tolvane::platform
