#include "platform/linux/session/LinuxUserSession.h"

#include "platform/linux/session/LocaleDates.h"
#include "platform/posix/Accounts.h"

#include <cstdlib>
#include <ctime>
#include <mutex>
#include <utility>
#include <unistd.h>

namespace tolvane::platform {

namespace {

std::string localeName(const LinuxUserSession::Environment& environment) {
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        if (const auto name = environment(variable); name && !name->empty()) {
            return icuLocaleName(*name);
        }
    }
    return icuLocaleName({});
}

} // namespace

std::optional<std::string> environmentVariable(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

/// Made when first needed, and used by one thread at a time.
struct LinuxUserSession::Dates {
    std::mutex mutex;
    std::optional<LocaleDates> inLocale;
};

LinuxUserSession::LinuxUserSession(Environment environment, std::optional<std::string> timeZone)
    : environment_(std::move(environment))
    , timeZone_(std::move(timeZone))
    , dates_(std::make_shared<Dates>()) {}

Date LinuxUserSession::now() const {
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    return Date::fromUnixTime(time.tv_sec, static_cast<std::uint32_t>(time.tv_nsec));
}

URL LinuxUserSession::homeDirectory() const {
    auto folder = environment_("HOME");
    if (!folder || !folder->starts_with('/')) {
        folder = homeFolderInDatabase(getuid());
    }
    return URL::fileURLWithPath(folder && folder->starts_with('/') ? *folder : "/");
}

std::string LinuxUserSession::describeForLocale(const Date& date) const {
    if (!date.hasCalendarDate()) {
        return date.description();
    }
    const std::lock_guard lock(dates_->mutex);
    if (!dates_->inLocale) {
        dates_->inLocale.emplace(localeName(environment_), timeZone_);
    }
    return dates_->inLocale->describe(date).value_or(date.description());
}

} // namespace tolvane::platform
