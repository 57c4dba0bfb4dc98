#pragma once

#include "details/DetailsTexts.h"

#include <optional>
#include <string>

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

} // namespace tolvane::details
