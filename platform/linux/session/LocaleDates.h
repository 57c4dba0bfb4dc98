#pragma once

#include "platform/values/Date.h"

#include <unicode/datefmt.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// Writes dates in full, with weekday and time zone, in the words of a locale. A language that ICU does not
/// know gets those of the locale "C". Use an object from one thread at a time.
class LocaleDates {
public:
    /// `locale` is a name of `icuLocaleName`. Without a time zone, ICU uses the process's own.
    LocaleDates(const std::string& locale, const std::optional<std::string>& timeZone);

    /// Nothing for dates outside ICU's calendar, and where ICU has no formatter. Fractions of seconds do not
    /// count, so the last description is cached: reports on many files describe the same second repeatedly.
    const std::optional<std::string>& describe(const Date& date);

private:
    std::optional<std::string> describeAnew(const Date& date) const;

    std::unique_ptr<icu::DateFormat> formatter_;
    std::optional<std::int64_t> described_;
    std::optional<std::string> description_;
};

/// The date library's name of a locale: "de_DE.UTF-8@euro" becomes de_DE, and "sr_RS@latin" sr_Latn_RS. The
/// codeset and modifiers other than scripts and the Valencian variant are dropped. An empty name, "C" and
/// "POSIX" (with or without a codeset) and invalid names become en_US_POSIX.
std::string icuLocaleName(std::string_view environmentName);

} // namespace tolvane::platform
