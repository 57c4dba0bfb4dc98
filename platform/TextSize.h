#pragma once

#include "platform/AttributedString.h"
#include "platform/UserDefaults.h"

#include <algorithm>
#include <string_view>

/// The rule by which a window keeps the size of its output text, in points. Each kind of window applies it
/// under a settings key of its own.
namespace tolvane::platform {

inline constexpr double defaultFontSize = 12.0;
inline constexpr double smallestFontSize = 4.0;
inline constexpr double largestFontSize = 24.0;
inline constexpr double fontSizeStep = 1.0;

/// The stored size, or the default when none is stored or it is below the smallest. A stored size above the
/// largest is used as it is.
inline double loadFontSize(const UserDefaults& defaults, std::string_view key) {
    const double stored = defaults.doubleForKey(key);
    return stored < smallestFontSize ? defaultFontSize : stored;
}

inline double largerFontSize(double size) {
    return std::min(size + fontSizeStep, largestFontSize);
}

inline double smallerFontSize(double size) {
    return std::max(size - fontSizeStep, smallestFontSize);
}

/// The style of output text: the standard text colour and the system font at this size.
inline TextAttributes outputStyle(double fontSize) {
    return {Color::textColor, Font::systemFontOfSize(fontSize)};
}

} // namespace tolvane::platform
