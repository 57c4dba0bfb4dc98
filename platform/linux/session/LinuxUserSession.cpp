#include "platform/linux/session/LinuxUserSession.h"

#include "platform/linux/files/Accounts.h"

#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <linux/limits.h>
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

/// Rounded down, so that no date is described as the next second. Nothing for dates beyond ICU's calendar,
/// for which it would describe its last date.
std::optional<UDate> millisecondsSince1970(const Date& date) {
    constexpr UDate calendarStart = -184'303'902'528'000'000.0;
    constexpr UDate calendarEnd = 183'882'168'921'600'000.0;
    constexpr UDate millisecondsPerSecond = 1'000;
    constexpr std::uint32_t nanosecondsPerMillisecond = 1'000'000;
    const std::uint32_t wholeMilliseconds = date.nanoseconds() / nanosecondsPerMillisecond;
    const UDate milliseconds =
        static_cast<UDate>(date.unixSeconds()) * millisecondsPerSecond + wholeMilliseconds;
    return milliseconds >= calendarStart && milliseconds <= calendarEnd ? std::optional(milliseconds)
                                                                        : std::nullopt;
}

constexpr std::array<std::pair<std::string_view, std::string_view>, 5> scriptModifiers{{
    {"latin", "_Latn"},
    {"cyrillic", "_Cyrl"},
    {"arabic", "_Arab"},
    {"devanagari", "_Deva"},
    {"hebrew", "_Hebr"},
}};

std::string_view scriptOf(std::string_view modifier) {
    const auto* place =
        std::ranges::find(scriptModifiers, modifier, [](const auto& entry) { return entry.first; });
    return place == scriptModifiers.end() ? std::string_view() : place->second;
}

bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// Names are untrusted, and long parts make the date library crash. The limits are those of language tags.
bool canBeLocale(std::string_view name) {
    constexpr std::size_t longestName = 64;
    constexpr std::size_t longestPart = 8;
    std::size_t partLength = 0;
    for (const char c : name) {
        const bool separates = c == '_' || c == '-';
        partLength = separates ? 0 : partLength + 1;
        if ((!separates && !isLetterOrDigit(c)) || partLength > longestPart) {
            return false;
        }
    }
    return !name.empty() && name.size() <= longestName;
}

} // namespace

/// ICU's formatter for full dates and times; without one when ICU cannot make it.
class LinuxUserSession::Formatter {
public:
    /// Without a zone, ICU uses the process's own.
    Formatter(const std::string& locale, const std::optional<std::string>& timeZone)
        : formatter_(icu::DateFormat::createDateTimeInstance(
              icu::DateFormat::kFull, icu::DateFormat::kFull, icu::Locale(locale.c_str()))) {
        if (formatter_ && timeZone) {
            formatter_->adoptTimeZone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(*timeZone)));
        }
    }

    /// The full formats have no fractions of seconds, and reports on many files describe the same second
    /// repeatedly, so the last description is cached.
    const std::optional<std::string>& describe(const Date& date) {
        if (!described_ || *described_ != date.unixSeconds()) {
            description_ = describeAnew(date);
            described_ = date.unixSeconds();
        }
        return description_;
    }

private:
    std::optional<std::string> describeAnew(const Date& date) const {
        const auto milliseconds = millisecondsSince1970(date);
        if (!formatter_ || !milliseconds) {
            return std::nullopt;
        }
        icu::UnicodeString text;
        std::string description;
        formatter_->format(*milliseconds, text).toUTF8String(description);
        return description.empty() ? std::nullopt : std::optional(std::move(description));
    }

    std::unique_ptr<icu::DateFormat> formatter_;
    std::optional<std::int64_t> described_;
    std::optional<std::string> description_;
};

std::optional<std::string> environmentVariable(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

LinuxUserSession::LinuxUserSession(Environment environment, std::optional<std::string> timeZone)
    : environment_(std::move(environment))
    , timeZone_(std::move(timeZone)) {}

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
    if (!formatter_) {
        formatter_ = std::make_shared<Formatter>(localeName(environment_), timeZone_);
    }
    return formatter_->describe(date).value_or(date.description());
}

Result<std::string> currentDirectory() {
    std::string path(PATH_MAX, '\0');
    while (getcwd(path.data(), path.size()) == nullptr) {
        if (errno != ERANGE) {
            return std::unexpected(posixError(errno));
        }
        path.resize(path.size() * 2);
    }
    path.resize(path.find('\0'));
    return path;
}

std::string icuLocaleName(std::string_view environmentName) {
    const auto modifierStart = std::min(environmentName.find('@'), environmentName.size());
    const auto modifier = environmentName.substr(std::min(modifierStart + 1, environmentName.size()));
    auto name = environmentName.substr(0, modifierStart);
    name = name.substr(0, name.find('.'));
    if (name == "C" || name == "POSIX" || !canBeLocale(name)) {
        return "en_US_POSIX";
    }
    const auto languageEnd = std::min(name.find('_'), name.size());
    std::string result(name.substr(0, languageEnd));
    result += scriptOf(modifier);
    result += name.substr(languageEnd);
    if (modifier == "valencia") {
        result += "_VALENCIA";
    }
    return result;
}

} // namespace tolvane::platform
