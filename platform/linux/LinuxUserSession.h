// The user's session as the environment, the account database and the system's clock describe it.
//
// Dates are described by ICU in the locale that LC_ALL, LC_TIME or LANG names, the first of them that is not
// empty, and in the zone that TZ or the system's setting names. Locale and zone are those of the first
// description: the formatter is costly, so it is made when it is first needed and kept. Use it from one
// thread at a time.
#pragma once

#include "platform/UserSession.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tolvane::platform {

/// The value of an environment variable, nothing when it is not set.
std::optional<std::string> environmentVariable(const std::string& name);

class LinuxUserSession final : public UserSession {
public:
    using Environment = std::function<std::optional<std::string>(const std::string& name)>;

    /// Another environment and a fixed time zone ("Europe/Berlin") are for tests.
    explicit LinuxUserSession(
        Environment environment = environmentVariable, std::optional<std::string> timeZone = std::nullopt);

    Date now() const override;

    /// HOME where it is an absolute path, else the folder in the user's account, else the root.
    URL homeDirectory() const override;

    /// Date::description where ICU has no formatter, and for dates outside its calendar.
    std::string describeForLocale(const Date& date) const override;

private:
    class Formatter;

    Environment environment_;
    std::optional<std::string> timeZone_;
    mutable std::shared_ptr<Formatter> formatter_;
};

} // namespace tolvane::platform
