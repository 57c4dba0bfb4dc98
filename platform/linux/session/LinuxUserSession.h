/// The user's session from the environment, the account database and the system clock.
///
/// ICU describes dates in the locale of LC_ALL, LC_TIME or LANG (the first that is not empty) and the zone of
/// TZ or the system. Creating the formatter is expensive, so it is made for the first description and kept.
/// Several threads may use one object, as long as none changes the environment.
#pragma once

#include "platform/services/UserSession.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tolvane::platform {

/// The value of an environment variable, nothing if it is not set.
std::optional<std::string> environmentVariable(const std::string& name);

class LinuxUserSession final : public UserSession {
public:
    using Environment = std::function<std::optional<std::string>(const std::string& name)>;

    /// Another environment and a fixed time zone ("Europe/Berlin") are for tests.
    explicit LinuxUserSession(
        Environment environment = environmentVariable, std::optional<std::string> timeZone = std::nullopt);

    Date now() const override;

    /// HOME if it is an absolute path, otherwise the folder in the user's account, otherwise the root.
    URL homeDirectory() const override;

    /// Falls back to Date::description if ICU has no formatter, and for dates outside its calendar.
    std::string describeForLocale(const Date& date) const override;

private:
    struct Dates;

    Environment environment_;
    std::optional<std::string> timeZone_;
    std::shared_ptr<Dates> dates_;
};

} // namespace tolvane::platform
