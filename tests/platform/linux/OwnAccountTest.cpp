#include "platform/linux/OwnAccount.h"

#include <gtest/gtest.h>

#include <memory>
#include <unistd.h>

namespace tolvane::platform {

namespace {

using std::chrono::steady_clock;

struct Database {
    std::optional<std::string> name = "demo";
    std::optional<std::string> home = "/home/demo";
    int asked = 0;
    steady_clock::time_point now;
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

} // namespace

TEST(OwnAccount, isWhatTheDatabaseTellsOfTheUser) {
    Database database;
    EXPECT_EQ(accountIn(database).account(), (Account{1000, "demo", "/home/demo"}));
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
    for (const auto& home : {std::optional<std::string>(), std::optional<std::string>("")}) {
        Database database;
        database.home = home;
        EXPECT_EQ(accountIn(database).account(), std::nullopt);
    }
    Database nameless;
    nameless.name = std::nullopt;
    EXPECT_EQ(accountIn(nameless).account(), std::nullopt);
}

TEST(OwnAccount, isRememberedForAWhile) {
    Database database;
    auto account = accountIn(database);
    EXPECT_EQ(account.account()->name, "demo");
    database.name = "renamed";
    database.now += std::chrono::seconds(4);
    EXPECT_EQ(account.account()->name, "demo");
    EXPECT_EQ(database.asked, 1);
    database.now += std::chrono::seconds(1);
    EXPECT_EQ(account.account()->name, "renamed");
}

} // namespace tolvane::platform
