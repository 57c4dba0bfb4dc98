// Who runs the program, by the system's account database: bookmarks to items in a user's home folder tell
// whose it is.
#pragma once

#include "platform/linux/AccountNames.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tolvane::platform {

struct Account {
    std::uint32_t id = 0;
    std::string name;
    std::string home; ///< The bytes of the home folder's path.

    friend bool operator==(const Account&, const Account&) = default;
};

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
