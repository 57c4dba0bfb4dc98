#pragma once

#include "platform/services/UserDefaults.h"

#include <map>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// Settings that live as long as this object.
class MemoryUserDefaults final : public UserDefaults {
public:
    bool boolForKey(std::string_view key) const override { return doubleForKey(key) != 0.0; }
    void setBool(bool value, std::string_view key) override { setDouble(value ? 1.0 : 0.0, key); }

    double doubleForKey(std::string_view key) const override {
        const auto entry = numbers_.find(key);
        return entry == numbers_.end() ? 0.0 : entry->second;
    }

    void setDouble(double value, std::string_view key) override {
        numbers_.insert_or_assign(std::string(key), value);
    }

private:
    std::map<std::string, double, std::less<>> numbers_;
};

} // namespace tolvane::platform
