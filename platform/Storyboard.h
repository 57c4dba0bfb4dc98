#pragma once

#include "platform/Value.h"

#include <memory>
#include <string_view>

namespace tolvane::platform {

class Controller;

/// A description of windows and their controllers from which any number of them can be made.
class Storyboard {
public:
    virtual ~Storyboard() = default;

    /// A new controller of the scene with this identifier, its outlets connected. Null when there is no such
    /// scene. The class of the controller is the scene's; callers check it.
    virtual std::shared_ptr<Controller> instantiateControllerWithIdentifier(
        std::string_view identifier) const = 0;
};

/// The key of the version that is shown to users, a text.
inline constexpr std::string_view CFBundleShortVersionString = "CFBundleShortVersionString";

/// The application's own resources.
class Bundle {
public:
    virtual ~Bundle() = default;

    /// The storyboard of this name, owned by the bundle; null when there is none.
    virtual const Storyboard* storyboardWithName(std::string_view name) const = 0;

    /// What the application tells about itself, owned by the bundle; null when it tells nothing.
    virtual const Dictionary* infoDictionary() const = 0;
};

} // namespace tolvane::platform
