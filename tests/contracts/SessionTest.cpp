// What the user's session answers on every system.
#include "tests/contracts/SystemUnderTest.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <limits>

namespace tolvane::tests::contracts {

using platform::Date;

using SessionContract = ContractTest;

TEST_F(SessionContract, theTimeIsThatOfTheSystemsClock) {
    const auto clock = [] {
        return std::chrono::duration_cast<std::chrono::nanoseconds>(
                   std::chrono::system_clock::now().time_since_epoch())
            .count();
    };
    const auto before = clock();
    const Date now = system.session->now();
    const auto after = clock();
    const auto nanoseconds = now.unixSeconds() * 1'000'000'000 + now.nanoseconds();
    // A clock that is set back in between says nothing about the session.
    if (before <= after) {
        EXPECT_LE(before, nanoseconds);
        EXPECT_LE(nanoseconds, after);
    }
}

TEST_F(SessionContract, theHomeFolderIsAFolder) {
    const std::string home = system.session->homeDirectory().path();
    EXPECT_TRUE(home.starts_with('/')) << home;
    EXPECT_TRUE(std::filesystem::is_directory(home)) << home;
}

TEST_F(SessionContract, datesAreDescribedInWordsOfTheirOwn) {
    const Date evening = Date::fromUnixTime(1'723'220'822, 0);
    const std::string text = system.session->describeForLocale(evening);
    EXPECT_FALSE(text.empty());
    EXPECT_NE(text, evening.description());
    EXPECT_EQ(text, system.session->describeForLocale(evening));
    EXPECT_NE(text, system.session->describeForLocale(Date::fromUnixTime(1'723'220'822 + 86'400, 0)));
    EXPECT_NE(text, system.session->describeForLocale(Date::fromUnixTime(1'723'220'821, 0)));
}

TEST_F(SessionContract, whatIsInNoCalendarIsDescribedInTheFixedForm) {
    for (const double seconds : {1e300, -1e300, std::numeric_limits<double>::quiet_NaN()}) {
        const Date date(seconds);
        EXPECT_EQ(system.session->describeForLocale(date), date.description());
    }
}

} // namespace tolvane::tests::contracts
