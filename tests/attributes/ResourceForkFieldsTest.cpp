#include "tests/attributes/Explaining.h"
#include "tests/support/AppleDoubleFiles.h"
#include "tests/support/ScriptedSources.h"

namespace tolvane::tests {
namespace {

TEST(ResourceForkFields, haveTypesCountsAndNames) {
    const platform::Data fork = resourceForkOf(
        {{"icns", -16455, bytesOf("abc")}, {"STR ", 128, bytesOf("x"), "Caf\x8E"}, {"STR ", 129, {}}});
    expectLines(
        "com.apple.ResourceFork", textOfBytes(fork),
        {"Resources: 3", "Type: 'icns': 1", "Type: 'STR ': 2", "Resource: 'icns' -16455, 3 bytes",
         "Resource: 'STR ' 128 \"Café\", 1 bytes", "Resource: 'STR ' 129, 0 bytes"});
    EXPECT_EQ(
        explainedSummary("user.org.netatalk.ResourceFork", textOfBytes(fork)),
        "Resource fork: 3 resources of 2 types, among them the item's own icon.");
}

TEST(ResourceForkFields, areFewWhereThereIsNothing) {
    EXPECT_EQ(explainedSummary("AFP_Resource", ""), "Resource fork without resources.");
    expectLines("AFP_Resource", textOfBytes(resourceForkOf({})), {"Resources: none"});
}

TEST(ResourceForkFields, areRefusedWhereTheForkIsDamaged) {
    const platform::Data fork = resourceForkOf({{"STR ", 128, bytesOf("x")}});
    for (std::size_t length = 1; length < fork.size(); ++length) {
        EXPECT_NE(complaintAbout("com.apple.ResourceFork", textOfBytes(std::span(fork).first(length))), "")
            << length;
    }
}

} // namespace
} // namespace tolvane::tests
