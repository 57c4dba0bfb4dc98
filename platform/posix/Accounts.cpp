#include "platform/posix/Accounts.h"

#include "platform/values/Utf8.h"

#include <cerrno>
#include <cstddef>
#include <utility>
#include <vector>
#include <grp.h>
#include <pwd.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

constexpr auto rememberedFor = std::chrono::seconds(5);
constexpr std::size_t mostRemembered = 1024;

constexpr std::size_t firstBufferSize = 1024;
// Groups with many members need a large buffer; beyond this size the database counts as broken.
constexpr std::size_t largestBufferSize = std::size_t{64} * 1024 * 1024;

// `ask` is getpwuid_r or getgrgid_r; `field` returns the wanted part of the entry.
template <typename Entry, typename Ask, typename Field>
std::optional<std::string> askDatabase(const Ask& ask, std::uint32_t number, const Field& field) {
    std::vector<char> buffer(firstBufferSize);
    while (true) {
        Entry entry{};
        Entry* found = nullptr;
        const int failure = ask(number, &entry, buffer.data(), buffer.size(), &found);
        if (failure == ERANGE && buffer.size() < largestBufferSize) {
            buffer.resize(buffer.size() * 4);
        } else if (failure != EINTR) {
            const char* text = found == nullptr ? nullptr : field(*found);
            return text == nullptr ? std::nullopt : std::optional<std::string>(text);
        }
    }
}

std::optional<std::string> asShownText(const std::optional<std::string>& name) {
    return name ? std::optional(shownText(*name)) : std::nullopt;
}

} // namespace

std::optional<std::string> userNameInDatabase(std::uint32_t userID) {
    return asShownText(
        askDatabase<passwd>(getpwuid_r, userID, [](const passwd& entry) { return entry.pw_name; }));
}

std::optional<std::string> groupNameInDatabase(std::uint32_t groupID) {
    return asShownText(
        askDatabase<group>(getgrgid_r, groupID, [](const group& entry) { return entry.gr_name; }));
}

std::optional<std::string> homeFolderInDatabase(std::uint32_t userID) {
    return askDatabase<passwd>(getpwuid_r, userID, [](const passwd& entry) { return entry.pw_dir; });
}

AccountNames::AccountNames(Lookup userLookup, Lookup groupLookup, Clock clock)
    : userLookup_(std::move(userLookup))
    , groupLookup_(std::move(groupLookup))
    , clock_(std::move(clock)) {}

std::optional<std::string> AccountNames::name(
    Memory& memory, const Lookup& lookup, std::uint32_t number) const {
    const std::lock_guard lock(*mutex_);
    const auto now = clock_();
    const auto place = memory.find(number);
    if (place != memory.end() && now - place->second.asked < rememberedFor) {
        return place->second.name;
    }
    auto answer = lookup(number);
    if (place == memory.end() && memory.size() >= mostRemembered) {
        memory.clear();
    }
    memory.insert_or_assign(number, Remembered{answer, now});
    return answer;
}

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
