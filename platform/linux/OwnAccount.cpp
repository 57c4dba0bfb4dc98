#include "platform/linux/OwnAccount.h"

#include <utility>
#include <unistd.h>

namespace tolvane::platform {

OwnAccount::OwnAccount()
    : OwnAccount(geteuid(), userNameInDatabase, homeFolderInDatabase, std::chrono::steady_clock::now) {}

OwnAccount::OwnAccount(
    std::uint32_t userID,
    AccountNames::Lookup nameLookup,
    AccountNames::Lookup homeLookup,
    AccountNames::Clock clock)
    : userID_(userID)
    , names_(std::move(nameLookup), groupNameInDatabase, clock)
    , homes_(std::move(homeLookup), groupNameInDatabase, std::move(clock)) {}

std::optional<Account> OwnAccount::account() {
    auto name = names_.userName(userID_);
    auto home = homes_.userName(userID_);
    if (!name || !home || !home->starts_with('/')) {
        return std::nullopt;
    }
    return Account{userID_, *std::move(name), *std::move(home)};
}

} // namespace tolvane::platform
