// Takes printed reports apart into the texts of their fields.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {

/// Texts under the names of the fields that show them; the date row is "date", the title "windowTitle".
using Fields = std::map<std::string, std::string>;

/// What a report shows for an item's name and path: names are bytes and may hold whatever the rows are made
/// of, so they have to be known to find the rows.
struct Heading {
    std::string title;
    std::string path;
};

/// The heading of the item at an absolute path.
Heading headingOf(const std::string& path);

/// Cuts the output of a run into its reports. Nothing when there are not exactly as many as headings, in
/// their order, with one blank line between two and one line feed at the end.
std::optional<std::vector<std::string>> splitReports(
    std::string_view output, const std::vector<Heading>& headings);

/// The fields of one report; nothing when a row is not as it has to be.
std::optional<Fields> fieldsOf(std::string_view report, const Heading& heading);

/// Bytes as text, with U+FFFD in place of what is not UTF-8.
std::string readableText(const std::string& bytes);

} // namespace tolvane::tests
