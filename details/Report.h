#pragma once

#include <optional>
#include <string>

namespace tolvane::details {

/// The texts that a report quotes, under the names of the fields that show them.
struct ReportFields {
    std::string windowTitle;
    std::string pathTextbox;
    std::string volfsPathTextbox;
    std::string frURLTextbox;
    std::string urlDataSize;
    std::string urlXattrSize;
    std::string urlTotalSize;
    std::string filemanSize;
    std::string xattrSize;
    std::string filemanTotalSize;
    std::string permsTextbox;
    std::string ownerNameTextbox;
    std::string ownerIDTextbox;
    std::string groupNameTextbox;
    std::string groupIDTextbox;
    std::string createdTextbox;
    std::string modifiedTextbox;
    std::string typeTextbox;
    std::string refCountTextbox;
    std::string bookmarkTextbox;
    std::string bookmarkPathTextbox;
    std::string inodeText;
    /// When the details were gathered, in words; nothing when they never were.
    std::optional<std::string> date;
};

/// The plain-text report: fifteen rows in a fixed order, whatever the values. Texts go in unchanged, line
/// feeds and all. The report ends with the date's last character, or without a date with a line feed.
std::string reportText(const ReportFields& fields);

} // namespace tolvane::details
