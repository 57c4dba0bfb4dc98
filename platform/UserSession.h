#pragma once

#include "platform/Date.h"
#include "platform/URL.h"

#include <string>

namespace tolvane::platform {

/// What the program asks of its user's session: the time, the home folder, the language.
class UserSession {
public:
    virtual ~UserSession() = default;

    virtual Date now() const = 0;

    /// The user's home folder.
    virtual URL homeDirectory() const = 0;

    /// A date described in full for the user's locale and time zone: weekday, date, time and the zone's name.
    virtual std::string describeForLocale(const Date& date) const = 0;
};

} // namespace tolvane::platform
