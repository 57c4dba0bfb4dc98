#include "platform/model/Outlet.h"

#include "platform/model/Button.h"
#include "platform/model/Control.h"
#include "platform/model/TextField.h"
#include "platform/model/TextView.h"

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
    const auto expectEntry = [&entries](std::size_t index, std::string_view name, auto& outlet) {
        EXPECT_EQ(entries[index].name, name);
        EXPECT_EQ(entries[index].outlet, OutletTable::Reference(&outlet)) << name;
    };
    expectEntry(0, "name", outlets.name);
    expectEntry(1, "frame", outlets.frame);
    expectEntry(2, "text", outlets.text);
    expectEntry(3, "again", outlets.again);
    expectEntry(4, "box", outlets.box);
}

} // namespace
} // namespace tolvane::platform
