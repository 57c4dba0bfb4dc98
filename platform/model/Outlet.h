#pragma once

#include "platform/values/FatalError.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tolvane::platform {

class TextField;
class TextView;
class ScrollView;
class Button;
class Table;
class ProgressIndicator;

template <typename T>
class Outlet;

/// The outlets of a controller by name, in the order of declaration. Storyboards use it to connect them,
/// front ends to read every field.
class OutletTable {
public:
    using Reference = std::variant<
        Outlet<TextField>*,
        Outlet<TextView>*,
        Outlet<ScrollView>*,
        Outlet<Button>*,
        Outlet<Table>*,
        Outlet<ProgressIndicator>*>;
    struct Entry {
        std::string_view name;
        Reference outlet;
    };

    OutletTable() { entries_.reserve(usualCount); }
    OutletTable(const OutletTable&) = delete;
    OutletTable& operator=(const OutletTable&) = delete;
    ~OutletTable() = default;

    const std::vector<Entry>& entries() const { return entries_; }
    void add(std::string_view name, Reference outlet) { entries_.push_back({name, outlet}); }

private:
    static constexpr std::size_t usualCount = 24;

    std::vector<Entry> entries_;
};

/// A controller's pointer to one of its controls, set once by the storyboard. The view owns the control and
/// lives as long as its controller. Using an unconnected outlet is a fatal error that names it.
template <typename T>
class Outlet {
public:
    /// Adds itself to the controller's table; `name` must be a literal.
    Outlet(OutletTable& table, std::string_view name) : name_(name) { table.add(name, this); }
    Outlet(const Outlet&) = delete;
    Outlet& operator=(const Outlet&) = delete;
    ~Outlet() = default;

    /// Connecting twice is a fatal error, since one of the controls would have no effect.
    void connect(T& control) {
        if (control_ != nullptr) {
            fatalError("outlet " + std::string(name_) + " is connected twice");
        }
        control_ = &control;
    }

    bool isConnected() const { return control_ != nullptr; }

    T& operator*() const {
        if (control_ == nullptr) {
            fatalError("outlet " + std::string(name_) + " is not connected");
        }
        return *control_;
    }
    T* operator->() const { return &**this; }

private:
    std::string_view name_;
    T* control_ = nullptr;
};

} // namespace tolvane::platform
