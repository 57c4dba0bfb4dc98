#pragma once

#include "details/DetailsTexts.h"

#include <optional>
#include <string>
#include <string_view>

namespace tolvane::details {

/// What a report quotes.
struct ReportFields {
    std::string windowTitle;
    /// An absent text is an empty one.
    DetailsTexts texts;
    /// When the details were gathered, in words; absent when they never were.
    std::optional<std::string> date;
};

/// The plain-text report: fifteen rows in a fixed order, whatever the values. Texts go in unchanged, line
/// feeds and all. The report ends with the date's last character, or without a date with a line feed.
std::string reportText(const ReportFields& fields);

/// The file name that is proposed for the report of a window with this title. A title that leaves no room for
/// the suffix is cut at the end of a character.
std::string reportFileName(std::string_view windowTitle);

} // namespace tolvane::details
