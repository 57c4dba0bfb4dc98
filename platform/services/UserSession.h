#pragma once

#include "platform/values/Date.h"
#include "platform/values/URL.h"

#include <string>

namespace tolvane::platform {

/// The user's session: time, home folder and language. The terminal program asks from
/// several threads at a time.
class UserSession {
public:
    virtual ~UserSession() = default;

    virtual Date now() const = 0;

    /// The user's home folder.
    virtual URL homeDirectory() const = 0;

    /// A date for the user's locale and time zone: weekday, date, time and the zone's name.
    virtual std::string describeForLocale(const Date& date) const = 0;
};

} // namespace tolvane::platform
