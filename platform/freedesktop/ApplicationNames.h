#pragma once

#include <QLatin1String>

/// The texts by which processes on the session's bus find the application and speak of it.
namespace tolvane::platform::application_names {

inline constexpr QLatin1String identifier("example.tolvane.tolvane");
inline constexpr QLatin1String objectPath("/example/tolvane/tolvane");
inline constexpr QLatin1String interface("org.freedesktop.Application");

/// Keys of the data that comes along with a request.
inline constexpr QLatin1String startupId("desktop-startup-id");
inline constexpr QLatin1String activationToken("activation-token");

} // namespace tolvane::platform::application_names
