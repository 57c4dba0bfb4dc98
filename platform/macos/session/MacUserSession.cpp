#include "platform/macos/session/MacUserSession.h"

#include "platform/macos/foundation/FoundationCalls.h"
#include "platform/macos/values/Conversions.h"

#include <chrono>

namespace tolvane::platform {

using macos::Owned;

Date MacUserSession::now() const {
    using std::chrono::duration_cast;
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch);
    const auto rest = duration_cast<std::chrono::nanoseconds>(sinceEpoch - seconds);
    return Date::fromUnixTime(seconds.count(), static_cast<std::uint32_t>(rest.count()));
}

URL MacUserSession::homeDirectory() const {
    const Owned<CFStringRef> folder(macos::copyHomeDirectory());
    const std::string path = folder ? macos::textOf(folder.get()) : std::string();
    return URL::fileURLWithPath(path.starts_with('/') ? path : "/");
}

std::string MacUserSession::describeForLocale(const Date& date) const {
    const Owned<CFDateRef> moment(
        date.hasCalendarDate() ? CFDateCreate(nullptr, date.timeIntervalSinceReferenceDate()) : nullptr);
    const Owned<CFLocaleRef> locale(CFLocaleCopyCurrent());
    if (!moment || !locale) {
        return date.description();
    }
    const Owned<CFDateFormatterRef> formatter(
        CFDateFormatterCreate(nullptr, locale.get(), kCFDateFormatterFullStyle, kCFDateFormatterFullStyle));
    if (!formatter) {
        return date.description();
    }
    const Owned<CFStringRef> text(
        CFDateFormatterCreateStringWithDate(nullptr, formatter.get(), moment.get()));
    return text ? macos::textOf(text.get()) : date.description();
}

OperatingSystemVersion MacProcessInfo::operatingSystemVersion() const {
    return macos::operatingSystemVersion();
}

} // namespace tolvane::platform
