#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>

namespace tolvane::platform {

/// Straight from the system's account databases, nothing remembered. Nothing when the number has no entry or
/// cannot be looked up; parts of a name that are not UTF-8 are shown as U+FFFD.
std::optional<std::string> userNameInDatabase(std::uint32_t userID);
std::optional<std::string> groupNameInDatabase(std::uint32_t groupID);

/// The bytes of the home folder's path in the user's account.
std::optional<std::string> homeFolderInDatabase(std::uint32_t userID);

/// Names of users and groups by their numbers.
///
/// A look into a database opens and reads files or asks a service, so answers are remembered for a few
/// seconds: a pass over many files asks once for each owner, and a program that stays open still sees an
/// account that was renamed. What is remembered is bounded.
class AccountNames {
public:
    using Lookup = std::function<std::optional<std::string>(std::uint32_t)>;
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// Other lookups and another clock are for tests.
    explicit AccountNames(
        Lookup userLookup = userNameInDatabase,
        Lookup groupLookup = groupNameInDatabase,
        Clock clock = std::chrono::steady_clock::now);

    /// Nothing when there is no such account, which is remembered just as a name is.
    std::optional<std::string> userName(std::uint32_t userID);
    std::optional<std::string> groupName(std::uint32_t groupID);

private:
    struct Remembered {
        std::optional<std::string> name;
        std::chrono::steady_clock::time_point asked;
    };
    using Memory = std::unordered_map<std::uint32_t, Remembered>;

    std::optional<std::string> name(Memory& memory, const Lookup& lookup, std::uint32_t number) const;

    Lookup userLookup_;
    Lookup groupLookup_;
    Clock clock_;
    Memory users_;
    Memory groups_;
};

struct Account {
    std::uint32_t id = 0;
    std::string name;
    std::string home; ///< The bytes of the home folder's path.

    friend bool operator==(const Account&, const Account&) = default;
};

/// The account that runs the program: bookmarks to items in its home folder store whose it is.
class OwnAccount {
public:
    /// That of the effective user; another user, other lookups and another clock are for tests.
    OwnAccount();
    OwnAccount(
        std::uint32_t userID,
        AccountNames::Lookup nameLookup,
        AccountNames::Lookup homeLookup,
        AccountNames::Clock clock);

    /// Nothing for a user without an account, or without an absolute home folder in it. Asked of the database
    /// again after a few seconds.
    std::optional<Account> account();

private:
    std::uint32_t userID_;
    AccountNames names_;
    AccountNames homes_;
};

} // namespace tolvane::platform
