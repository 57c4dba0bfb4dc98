#pragma once

#include "platform/values/Value.h"

#include <memory>
#include <string_view>

namespace tolvane::platform {

class Controller;

/// A description of windows and controllers, from which any number of them can be made.
class Storyboard {
public:
    virtual ~Storyboard() = default;

    /// Makes a controller of the scene with this identifier, with connected outlets; null if there is no such
    /// scene. The scene decides the controller's class; callers check it.
    virtual std::shared_ptr<Controller> instantiateControllerWithIdentifier(
        std::string_view identifier) const = 0;
};

/// The key of the version for users, a text.
inline constexpr std::string_view CFBundleShortVersionString = "CFBundleShortVersionString";

/// The application's own resources.
class Bundle {
public:
    virtual ~Bundle() = default;

    /// The storyboard with this name, owned by the bundle, or null.
    virtual const Storyboard* storyboardWithName(std::string_view name) const = 0;

    /// The application's information dictionary, owned by the bundle, or null.
    virtual const Dictionary* infoDictionary() const = 0;
};

} // namespace tolvane::platform
