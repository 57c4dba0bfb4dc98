#include "platform/linux/LinuxUserSession.h"

#include "platform/linux/AccountNames.h"
#include "platform/linux/LocaleName.h"

#include <unicode/udat.h>
#include <unicode/ustring.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <string_view>
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

// Rounded down, so that no date is described as the second after it. Nothing for dates that are past the ends
// of ICU's calendar, where it would describe the end instead.
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

std::optional<std::string> utf8(const std::u16string& text) {
    // One UTF-16 unit becomes three bytes at most.
    std::string result(text.size() * 3, '\0');
    std::int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8(
        result.data(), static_cast<std::int32_t>(result.size()), &length, text.data(),
        static_cast<std::int32_t>(text.size()), &status);
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    result.resize(static_cast<std::size_t>(length));
    return result;
}

} // namespace

// ICU's formatter for full dates and times; without one when ICU cannot make it.
class LinuxUserSession::Formatter {
public:
    // Without a zone, ICU finds out the process's own.
    Formatter(const std::string& locale, const std::optional<std::string>& timeZone) {
        std::u16string zone;
        if (timeZone) {
            zone.assign(timeZone->begin(), timeZone->end()); // zones are named in ASCII
        }
        UErrorCode status = U_ZERO_ERROR;
        formatter_.reset(udat_open(
            UDAT_FULL, UDAT_FULL, locale.c_str(), timeZone ? zone.data() : nullptr,
            static_cast<std::int32_t>(zone.size()), nullptr, 0, &status));
        if (U_FAILURE(status)) {
            formatter_.reset();
        }
    }

    // The full forms show seconds and nothing finer, and a pass over many files asks for the same one again
    // and again, so the last description is kept.
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
        std::u16string text(128, u'\0');
        UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
        for (int attempt = 0; attempt < 2 && status == U_BUFFER_OVERFLOW_ERROR; ++attempt) {
            status = U_ZERO_ERROR;
            const auto length = udat_format(
                formatter_.get(), *milliseconds, text.data(), static_cast<std::int32_t>(text.size()), nullptr,
                &status);
            text.resize(static_cast<std::size_t>(length));
        }
        return U_FAILURE(status) || text.empty() ? std::nullopt : utf8(text);
    }

    struct Closer {
        void operator()(UDateFormat* formatter) const { udat_close(formatter); }
    };

    std::unique_ptr<UDateFormat, Closer> formatter_;
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

} // namespace tolvane::platform
