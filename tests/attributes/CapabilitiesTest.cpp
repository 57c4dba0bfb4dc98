#include "tests/attributes/Explaining.h"

#include <numeric>

namespace tolvane::tests {
namespace {

using testing::HasSubstr;

constexpr const char* capability = "security.capability";

std::string words(const std::string& value) {
    return explained(capability, value).fields.at(0).text;
}

TEST(Capabilities, areWrittenAsTheUsualToolsDo) {
    EXPECT_EQ(words(fileCapabilities({13}, {}, true)), "cap_net_raw=ep");
    EXPECT_EQ(words(fileCapabilities({13}, {}, false)), "cap_net_raw=p");
    EXPECT_EQ(words(fileCapabilities({13}, {34}, true)), "cap_syslog=ei cap_net_raw+ep");
    EXPECT_EQ(words(fileCapabilities({0, 34}, {0, 5}, false)), "cap_chown=ip cap_kill+i cap_syslog+p");
    EXPECT_EQ(words(fileCapabilities({}, {}, false)), "none");
    EXPECT_EQ(words(fileCapabilities({50}, {}, true)), "50=ep");
    EXPECT_EQ(words(fileCapabilities({1, 50}, {}, true)), "cap_dac_override=ep 50+ep");
}

TEST(Capabilities, beginWithWhatMostOfThemHave) {
    std::vector<unsigned> all(41);
    std::iota(all.begin(), all.end(), 0U);
    EXPECT_EQ(words(fileCapabilities(all, {}, true)), "=ep");
    EXPECT_EQ(words(fileCapabilities({all.begin() + 1, all.end()}, {}, true)), "=ep cap_chown-ep");
    EXPECT_EQ(words(fileCapabilities({all.begin() + 1, all.end()}, {0}, true)), "=ep cap_chown+i-p");
}

TEST(Capabilities, haveTheirSetsBesides) {
    expectLines(
        capability, fileCapabilities({10, 13}, {}, true, 3, 1000),
        {"Capabilities: cap_net_bind_service,cap_net_raw=ep", "Permitted: cap_net_bind_service,cap_net_raw",
         "Inheritable: none", "Effective when run: yes", "Revision: 3",
         "Root of the user namespace: 1000 (u1000)"},
        knownAccounts());
    EXPECT_THAT(
        explainedSummary(capability, fileCapabilities({13}, {}, true, 1)), HasSubstr("cap_net_raw=ep."));
}

TEST(Capabilities, areRefusedInAnyOtherForm) {
    for (const unsigned revision : {1U, 2U, 3U}) {
        expectEveryCutRefused(capability, fileCapabilities({1}, {}, true, revision));
        expectRefused(capability, {fileCapabilities({1}, {}, true, revision) + "x"});
    }
    expectRefused(capability, {fileCapabilities({1}, {}, true, 4), little<4>(0x02000002) + zeros(16)});
}

} // namespace
} // namespace tolvane::tests
