#pragma once

#include "platform/model/AttributedString.h"
#include "platform/services/UserDefaults.h"

#include <algorithm>
#include <cmath>
#include <string_view>

/// How windows store the size of their output text, in points, each kind under its own key.
namespace tolvane::platform {

inline constexpr double defaultFontSize = 12.0;
inline constexpr double smallestFontSize = 4.0;
inline constexpr double largestFontSize = 24.0;
inline constexpr double fontSizeStep = 1.0;

/// The stored size; the default if there is none, or it is below the smallest or not finite. A stored size
/// above the largest is returned as it is.
inline double loadFontSize(const UserDefaults& defaults, std::string_view key) {
    const double stored = defaults.doubleForKey(key);
    return std::isfinite(stored) && stored >= smallestFontSize ? stored : defaultFontSize;
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
