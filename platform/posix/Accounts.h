#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>

namespace tolvane::platform {

/// From the system's account databases, uncached. Nothing if the number has no entry or the lookup fails;
/// invalid UTF-8 in names becomes U+FFFD.
std::optional<std::string> userNameInDatabase(std::uint32_t userID);
std::optional<std::string> groupNameInDatabase(std::uint32_t groupID);

/// The bytes of the home folder's path in the user's account.
std::optional<std::string> homeFolderInDatabase(std::uint32_t userID);

/// Names of users and groups by number. Lookups read files or ask a service, so answers are cached for a few
/// seconds, in bounded memory: reports on many files ask once per owner, and a renamed account is noticed.
/// Several threads may use one object.
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
    std::optional<std::string> userName(std::uint32_t userID) { return name(users_, userLookup_, userID); }
    std::optional<std::string> groupName(std::uint32_t groupID) {
        return name(groups_, groupLookup_, groupID);
    }

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
    std::unique_ptr<std::mutex> mutex_ = std::make_unique<std::mutex>(); // of what follows, and a lookup
    Memory users_;
    Memory groups_;
};

struct Account {
    std::uint32_t id = 0;
    std::string name;
    std::string home; ///< The bytes of the home folder's path.

    friend bool operator==(const Account&, const Account&) = default;
};

/// The account that runs the program: bookmarks to items in its home folder store whose it is. Several
/// threads may use one object.
class OwnAccount {
public:
    /// The effective user's. Another user, lookups and clock are for tests.
    OwnAccount();
    OwnAccount(
        std::uint32_t userID,
        AccountNames::Lookup nameLookup,
        AccountNames::Lookup homeLookup,
        AccountNames::Clock clock);

    /// Nothing for a user without an account or an absolute home folder. Cached for a few seconds.
    std::optional<Account> account();

private:
    std::uint32_t userID_;
    AccountNames names_;
    AccountNames homes_;
};

} // namespace tolvane::platform
