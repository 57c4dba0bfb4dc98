#pragma once

#include <string_view>

namespace tolvane::platform {

/// The user's settings by key, stored between launches where possible. Failures are not reported.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// The boolean under the key; false if there is none.
    virtual bool boolForKey(std::string_view key) const = 0;
    virtual void setBool(bool value, std::string_view key) = 0;

    /// The number under the key; 0.0 if there is none.
    virtual double doubleForKey(std::string_view key) const = 0;
    virtual void setDouble(double value, std::string_view key) = 0;
};

} // namespace tolvane::platform
