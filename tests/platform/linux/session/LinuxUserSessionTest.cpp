#include "platform/linux/session/LinuxUserSession.h"

#include "platform/posix/Accounts.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>
#include <unistd.h>

namespace tolvane::platform {
namespace {

using Variables = std::map<std::string, std::string>;

LinuxUserSession::Environment environmentOf(Variables variables) {
    return [variables = std::move(variables)](const std::string& name) {
        const auto variable = variables.find(name);
        return variable == variables.end() ? std::nullopt : std::optional(variable->second);
    };
}

// 9 August 2024, 18:27:02 and almost a second more in Berlin.
const Date summerEvening = Date::fromUnixTime(1'723'220'822, 999'999'999);

std::string described(Variables variables, const Date& date = summerEvening) {
    return LinuxUserSession(environmentOf(std::move(variables)), "Europe/Berlin").describeForLocale(date);
}

std::string homePath(Variables variables) {
    return LinuxUserSession(environmentOf(std::move(variables))).homeDirectory().path();
}

TEST(LinuxUserSession, takesTheHomeFolderFromTheEnvironmentOrElseTheAccount) {
    EXPECT_EQ(homePath({{"HOME", "/home/ada"}}), "/home/ada");
    EXPECT_EQ(homePath({{"HOME", "/home/\xFF"}}), "/home/\xFF");
    const auto folder = homeFolderInDatabase(getuid()).value_or("/");
    EXPECT_EQ(homePath({}), folder);
    EXPECT_EQ(homePath({{"HOME", ""}}), folder);
    EXPECT_EQ(homePath({{"HOME", "relative/folder"}}), folder);
}

TEST(LinuxUserSession, describesDatesInFullInTheUsersLanguage) {
    const auto english = described({{"LANG", "en_US.UTF-8"}});
    EXPECT_TRUE(english.starts_with("Friday, August 9, 2024")) << english;
    EXPECT_TRUE(english.contains("6:27:02")) << english;
    EXPECT_TRUE(english.ends_with("Central European Summer Time")) << english;
    const auto german = described({{"LANG", "de_DE.UTF-8@euro"}});
    EXPECT_TRUE(german.starts_with("Freitag, 9. August 2024")) << german;
    EXPECT_TRUE(german.contains("18:27:02")) << german;
    EXPECT_TRUE(german.contains("Mitteleurop\u00E4ische Sommerzeit")) << german;
    const auto before1970 = described({{"LANG", "de_DE"}}, Date::fromUnixTime(-3'601, 500'000'000));
    EXPECT_TRUE(before1970.starts_with("Mittwoch, 31. Dezember 1969")) << before1970;
    EXPECT_TRUE(before1970.contains("23:59:59")) << before1970;
}

TEST(LinuxUserSession, describesDatesInEnglishWithoutALocaleThatItKnows) {
    const std::vector<Variables> environments{
        {},
        {{"LANG", ""}},
        {{"LANG", "C"}},
        {{"LC_ALL", "POSIX"}},
        {{"LC_ALL", "C.UTF-8"}, {"LANG", "de_DE"}},
        {{"LANG", std::string(10'000, 'x')}},
        {{"LANG", "\xFF\xFE_!!"}}};
    for (const Variables& variables : environments) {
        EXPECT_TRUE(described(variables).starts_with("Friday, August 9, 2024")) << described(variables);
    }
    for (const auto* name : {"xx_YY", "abcdefgh_abcdefgh_abcdefgh_abcdefgh_abcdefgh_abcdefgh_abcdefgh"}) {
        EXPECT_TRUE(described({{"LANG", name}}).contains("August")) << name;
    }
}

TEST(LinuxUserSession, looksForTheLocaleInTheUsualOrder) {
    const std::string german = "Freitag";
    EXPECT_TRUE(described({{"LANG", "fr_FR"}, {"LC_TIME", "fr_FR"}, {"LC_ALL", "de_DE"}}).contains(german));
    EXPECT_TRUE(described({{"LANG", "fr_FR"}, {"LC_TIME", "de_DE"}}).contains(german));
    EXPECT_TRUE(described({{"LANG", "fr_FR"}, {"LC_TIME", "de_DE"}, {"LC_ALL", ""}}).contains(german));
    EXPECT_TRUE(described({{"LANG", "de_DE"}, {"LC_TIME", ""}}).contains(german));
    EXPECT_TRUE(described({{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}}).contains(german));
}

TEST(LinuxUserSession, readsTheEnvironmentOnceAndOnlyWhenADateIsDescribed) {
    int questions = 0;
    const LinuxUserSession session(
        [&questions](const std::string&) {
            ++questions;
            return std::optional<std::string>("en_US");
        },
        "UTC");
    EXPECT_EQ(questions, 0);
    const auto first = session.describeForLocale(summerEvening);
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(session.describeForLocale(summerEvening), first);
    EXPECT_NE(session.describeForLocale(Date::fromUnixTime(0, 0)), first);
    EXPECT_EQ(questions, 1);
}

TEST(LinuxUserSession, describesDatesOutsideTheCalendarInTheFixedForm) {
    EXPECT_EQ(described({{"LANG", "en_US"}}, Date(1e16)), Date(1e16).description());
    EXPECT_TRUE(described({{"LANG", "en_US"}}, Date(1e14)).contains("3170874"));
}

TEST(LinuxUserSession, readsVariablesOfTheProcess) {
    ASSERT_EQ(setenv("TOLVANE_TEST_VARIABLE", "value", 1), 0);
    EXPECT_EQ(environmentVariable("TOLVANE_TEST_VARIABLE"), "value");
    unsetenv("TOLVANE_TEST_VARIABLE");
    EXPECT_EQ(environmentVariable("TOLVANE_TEST_VARIABLE"), std::nullopt);
}

} // namespace
} // namespace tolvane::platform
