#pragma once

#include <QLatin1String>

/// The names of the application on the session bus.
namespace tolvane::platform::application_names {

inline constexpr QLatin1String identifier("example.tolvane.tolvane");
inline constexpr QLatin1String objectPath("/example/tolvane/tolvane");
inline constexpr QLatin1String interface("org.freedesktop.Application");

/// Keys of a request's platform data.
inline constexpr QLatin1String startupId("desktop-startup-id");
inline constexpr QLatin1String activationToken("activation-token");

} // namespace tolvane::platform::application_names
