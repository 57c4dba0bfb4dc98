#include "platform/model/Outlet.h"

#include "platform/model/Controls.h"

#include <gtest/gtest.h>

#include <variant>

namespace tolvane::platform {
namespace {

TEST(Outlet, leadsToTheControlItWasConnectedTo) {
    OutletTable table;
    Outlet<TextField> outlet(table, "field");
    EXPECT_FALSE(outlet.isConnected());
    TextField field;
    outlet.connect(field);
    EXPECT_TRUE(outlet.isConnected());
    EXPECT_EQ(&*outlet, &field);
    outlet->setStringValue("a");
    EXPECT_EQ(field.stringValue(), "a");
}

TEST(OutletDeathTest, isNamedWhenUsedUnconnected) {
    OutletTable table;
    const Outlet<TextField> field(table, "fileSizeField");
    const Outlet<TextView> view(table, "reportView");
    EXPECT_DEATH(field->stringValue(), "fatal: outlet fileSizeField is not connected");
    EXPECT_DEATH(static_cast<void>(*view), "fatal: outlet reportView is not connected");
}

TEST(OutletDeathTest, isNamedWhenConnectedTwice) {
    OutletTable table;
    Outlet<TextField> outlet(table, "fileSizeField");
    TextField first;
    TextField second;
    outlet.connect(first);
    EXPECT_DEATH(outlet.connect(second), "fatal: outlet fileSizeField is connected twice");
    EXPECT_DEATH(outlet.connect(first), "fatal: outlet fileSizeField is connected twice");
}

TEST(OutletTable, listsOutletsInTheOrderOfDeclaration) {
    struct Outlets {
        OutletTable table;
        Outlet<TextField> name{table, "name"};
        Outlet<ScrollView> frame{table, "frame"};
        Outlet<TextView> text{table, "text"};
        Outlet<TextField> again{table, "again"};
        Outlet<Button> box{table, "box"};
    };
    Outlets outlets;
    const auto& entries = outlets.table.entries();
    ASSERT_EQ(entries.size(), 5U);
    EXPECT_EQ(entries[0].name, "name");
    EXPECT_EQ(entries[0].outlet, OutletTable::Reference(&outlets.name));
    EXPECT_EQ(entries[1].name, "frame");
    EXPECT_EQ(entries[1].outlet, OutletTable::Reference(&outlets.frame));
    EXPECT_EQ(entries[2].name, "text");
    EXPECT_EQ(entries[2].outlet, OutletTable::Reference(&outlets.text));
    EXPECT_EQ(entries[3].name, "again");
    EXPECT_EQ(entries[3].outlet, OutletTable::Reference(&outlets.again));
    EXPECT_EQ(entries[4].name, "box");
    EXPECT_EQ(entries[4].outlet, OutletTable::Reference(&outlets.box));
}

TEST(OutletTable, connectsTheOutletItself) {
    OutletTable table;
    const Outlet<TextField> outlet(table, "name");
    TextField field;
    std::get<Outlet<TextField>*>(table.entries().front().outlet)->connect(field);
    EXPECT_EQ(&*outlet, &field);
}

} // namespace
} // namespace tolvane::platform
