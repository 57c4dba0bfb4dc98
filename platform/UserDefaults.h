#pragma once

#include <string_view>

namespace tolvane::platform {

/// The user's settings by key. They are kept from launch to launch where the program has a place for them;
/// reading and writing cannot fail as far as callers are concerned.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// Whether the key stands for yes; false when there is nothing under it, or no yes or no.
    virtual bool boolForKey(std::string_view key) const = 0;
    virtual void setBool(bool value, std::string_view key) = 0;

    /// The number under the key; 0.0 when there is none.
    virtual double doubleForKey(std::string_view key) const = 0;
    virtual void setDouble(double value, std::string_view key) = 0;
};

} // namespace tolvane::platform
