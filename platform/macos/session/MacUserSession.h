#pragma once

#include "platform/services/ProcessInfo.h"
#include "platform/services/UserSession.h"

namespace tolvane::platform {

/// The user's session: the system's clock, home folder and date formatter. Several threads may use one
/// object.
class MacUserSession final : public UserSession {
public:
    Date now() const override;

    /// The root if the system names no folder.
    URL homeDirectory() const override;

    /// In full, with weekday and time zone, for the user's current locale; Date::description if the system
    /// has no formatter, and for dates outside every calendar.
    std::string describeForLocale(const Date& date) const override;
};

class MacProcessInfo final : public ProcessInfo {
public:
    OperatingSystemVersion operatingSystemVersion() const override;
};

} // namespace tolvane::platform
