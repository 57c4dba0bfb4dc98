#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* zone = "user.Zone.Identifier";

TEST(ZoneIdentifier, hasZoneAndAddresses) {
    const std::string value = "[ZoneTransfer]\r\nZoneId=3\r\nReferrerUrl=https://example.org/"
                              "\r\nHostUrl=https://example.org/a=b\r\nAppZoneId=4\r\n"
                              "LastWriterPackageFamilyName=browser\r\n";
    expectLines(
        zone, value,
        {"Zone: Internet (3)", "Page address: https://example.org/", "File address: https://example.org/a=b",
         "AppZoneId: 4", "Last written by: browser"});
    EXPECT_EQ(
        explainedSummary("user.DosStream.Zone.Identifier:$DATA", value + zeros(1)),
        "Windows: where the file came from; zone: Internet, downloaded from https://example.org/a=b.");
}

TEST(ZoneIdentifier, mayBeInUtf16OrHaveAMark) {
    expectLines(zone, "\xFF\xFE" + utf16("[ZoneTransfer]\r\nZoneId=0\r\n"), {"Zone: my computer (0)"});
    expectLines(zone, "\xEF\xBB\xBF[ZoneTransfer]\nZoneId=9", {"Zone: unknown (9)"});
}

TEST(ZoneIdentifier, saysThatAnAddressIsHidden) {
    expectLines(zone, "[ZoneTransfer]\nHostUrl=about:internet", {"File address: hidden (about:internet)"});
}

TEST(ZoneIdentifier, notesOtherLines) {
    const auto explanation = explained(zone, "odd\n[Other]\nx=1\n[ZoneTransfer]\nZoneId=high\n");
    EXPECT_THAT(linesOf(explanation), ElementsAre("ZoneId: high"));
    EXPECT_THAT(
        explanation.notes, ElementsAre(
                               "A line that is no entry of [ZoneTransfer]: odd",
                               "A line that is no entry of [ZoneTransfer]: x=1"));
    EXPECT_THAT(complaintAbout(zone, "ZoneId=3"), HasSubstr("the line [ZoneTransfer]"));
    expectRefused(zone, {"[ZoneTransfer]\xFF"});
}

} // namespace
} // namespace tolvane::tests
