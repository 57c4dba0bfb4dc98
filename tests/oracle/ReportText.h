// Parses printed reports into the texts of their fields.
#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {

/// Texts under the names of the fields that show them; the date row is "date", the title "windowTitle".
using Fields = std::map<std::string, std::string>;

/// The fields with texts from the file manager's dictionary, but for the sizes.
inline constexpr std::array dictionaryFields{"volfsPathTextbox", "permsTextbox",     "ownerNameTextbox",
                                             "ownerIDTextbox",   "groupNameTextbox", "groupIDTextbox",
                                             "createdTextbox",   "modifiedTextbox",  "typeTextbox",
                                             "refCountTextbox",  "inodeText"};

/// A report's title and path. Names may contain anything that the rows consist of, so parsing requires them.
struct Heading {
    std::string title;
    std::string path;
};

/// The heading of the item at an absolute path.
Heading headingOf(const std::string& path);

/// The fields of the reports that a run printed, one for each heading. The test fails, and fields are
/// missing, if the output is anything but these reports in this order, a blank line between two and a line
/// feed at the end.
std::vector<Fields> reportsIn(std::string_view output, const std::vector<Heading>& headings);

/// The same for the only report, about the item at an absolute path.
Fields reportIn(std::string_view output, const std::string& path);

/// Bytes as text, with U+FFFD in place of invalid UTF-8.
std::string readableText(const std::string& bytes);

} // namespace tolvane::tests
