#include "platform/model/Outlet.h"

#include "platform/model/Controls.h"

#include <gtest/gtest.h>

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
    const std::pair<std::string_view, OutletTable::Reference> expected[] = {
        {"name", &outlets.name},
        {"frame", &outlets.frame},
        {"text", &outlets.text},
        {"again", &outlets.again},
        {"box", &outlets.box}};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i].name, expected[i].first);
        EXPECT_EQ(entries[i].outlet, expected[i].second) << entries[i].name;
    }
}

} // namespace
} // namespace tolvane::platform
