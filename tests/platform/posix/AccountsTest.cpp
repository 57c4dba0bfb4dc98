#include "platform/posix/Accounts.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <unistd.h>

namespace tolvane::platform {
namespace {

using std::chrono::seconds;

// Names every number after itself and counts the questions. Its clock stands still.
struct CountingDatabase {
    std::chrono::steady_clock::time_point now;
    int userQuestions = 0;
    int groupQuestions = 0;
    bool hasAccounts = true;

    AccountNames names() {
        return AccountNames(
            [this](std::uint32_t number) {
                ++userQuestions;
                return hasAccounts ? std::optional("user " + std::to_string(number)) : std::nullopt;
            },
            [this](std::uint32_t number) {
                ++groupQuestions;
                return hasAccounts ? std::optional("group " + std::to_string(number)) : std::nullopt;
            },
            [this] { return now; });
    }
};

struct Database {
    std::optional<std::string> name = "demo";
    std::optional<std::string> home = "/home/demo";
    int asked = 0;
    std::chrono::steady_clock::time_point now = {};
};

OwnAccount accountIn(Database& database) {
    return OwnAccount(
        1000,
        [&database](std::uint32_t id) {
            EXPECT_EQ(id, 1000U);
            ++database.asked;
            return database.name;
        },
        [&database](std::uint32_t id) {
            EXPECT_EQ(id, 1000U);
            return database.home;
        },
        [&database] { return database.now; });
}

TEST(AccountNames, areThoseOfTheDatabase) {
    EXPECT_EQ(userNameInDatabase(0), "root");
    EXPECT_EQ(groupNameInDatabase(0), "root");
    EXPECT_TRUE(homeFolderInDatabase(0).value().starts_with('/'));
    EXPECT_EQ(AccountNames().userName(0), "root");
    EXPECT_EQ(AccountNames().groupName(0), "root");
    constexpr std::uint32_t unknownNumber = 3'999'999'999;
    EXPECT_EQ(userNameInDatabase(unknownNumber), std::nullopt);
    EXPECT_EQ(groupNameInDatabase(unknownNumber), std::nullopt);
    EXPECT_EQ(homeFolderInDatabase(unknownNumber), std::nullopt);
}

TEST(AccountNames, asksOnceForEachNumber) {
    CountingDatabase database;
    auto names = database.names();
    for (int i = 0; i < 10'000; ++i) {
        EXPECT_EQ(names.userName(1), "user 1");
        EXPECT_EQ(names.groupName(2), "group 2");
    }
    EXPECT_EQ(names.userName(2), "user 2");
    EXPECT_EQ(database.userQuestions, 2);
    EXPECT_EQ(database.groupQuestions, 1);
}

TEST(AccountNames, asksAgainAfterFiveSeconds) {
    CountingDatabase database;
    database.hasAccounts = false;
    auto names = database.names();
    EXPECT_EQ(names.userName(1), std::nullopt);
    database.hasAccounts = true;
    database.now += seconds(5) - std::chrono::nanoseconds(1);
    EXPECT_EQ(names.userName(1), std::nullopt);
    database.now += std::chrono::nanoseconds(1);
    EXPECT_EQ(names.userName(1), "user 1");
    EXPECT_EQ(names.userName(1), "user 1");
    EXPECT_EQ(database.userQuestions, 2);
}

TEST(AccountNames, forgetsEverythingRatherThanGrowWithoutBound) {
    CountingDatabase database;
    auto names = database.names();
    for (std::uint32_t number = 0; number < 1024; ++number) {
        names.userName(number);
    }
    names.userName(0);
    EXPECT_EQ(database.userQuestions, 1024);
    names.userName(1024);
    EXPECT_EQ(names.userName(0), "user 0");
    EXPECT_EQ(names.userName(1024), "user 1024");
    EXPECT_EQ(database.userQuestions, 1026);
}

TEST(OwnAccount, isThatOfTheEffectiveUser) {
    const auto account = OwnAccount().account();
    const auto home = homeFolderInDatabase(geteuid());
    const auto name = userNameInDatabase(geteuid());
    if (!home || !name) {
        EXPECT_EQ(account, std::nullopt);
    } else {
        EXPECT_EQ(account, (Account{geteuid(), *name, *home}));
    }
}

TEST(OwnAccount, isNoneWithoutANameOrAHomeFolder) {
    for (Database database : {Database{.name = {}}, Database{.home = {}}, Database{.home = ""}}) {
        EXPECT_EQ(accountIn(database).account(), std::nullopt);
    }
}

TEST(OwnAccount, isReadFromTheDatabaseAndRememberedForAWhile) {
    Database database;
    auto account = accountIn(database);
    EXPECT_EQ(account.account(), (Account{1000, "demo", "/home/demo"}));
    database.name = "renamed";
    database.now += std::chrono::seconds(4);
    EXPECT_EQ(account.account()->name, "demo");
    EXPECT_EQ(database.asked, 1);
    database.now += std::chrono::seconds(1);
    EXPECT_EQ(account.account()->name, "renamed");
}

} // namespace
} // namespace tolvane::platform
