#include "tests/oracle/ReportText.h"

#include <gtest/gtest.h>
#include <unicode/unistr.h>

#include <array>
#include <cstddef>
#include <optional>
#include <utility>

namespace tolvane::tests {

namespace {

// A literal of the report and the field that follows it.
struct Piece {
    std::string_view literal;
    std::string_view field;
};

// What follows the two rows of the heading.
constexpr std::array pieces{
    Piece{"volfs path: ", "volfsPathTextbox"},
    Piece{"\nFileReferenceURL: ", "frURLTextbox"},
    Piece{"\nSizes:\n     URL Keys: data ", "urlDataSize"},
    Piece{" metadata ", "urlXattrSize"},
    Piece{" total ", "urlTotalSize"},
    Piece{"\n     File system: data ", "filemanSize"},
    Piece{" metadata ", "xattrSize"},
    Piece{" total ", "filemanTotalSize"},
    Piece{"\nPosix permissions (octal): ", "permsTextbox"},
    Piece{"\nOwner: ", "ownerNameTextbox"},
    Piece{" ID ", "ownerIDTextbox"},
    Piece{"\nGroup: ", "groupNameTextbox"},
    Piece{" ID ", "groupIDTextbox"},
    Piece{"\nCreated: ", "createdTextbox"},
    Piece{" last modified ", "modifiedTextbox"},
    Piece{"\nType: ", "typeTextbox"},
    Piece{" reference count: ", "refCountTextbox"},
    Piece{"\n\nBookmark (Base-64):\n", "bookmarkTextbox"},
    Piece{"\n\nBookmark path: ", "bookmarkPathTextbox"},
    Piece{"\n\nExtended attributes: ", "inodeText"},
    Piece{"\non ", "date"}};

std::string rowsOf(const Heading& heading) {
    return "Details for file " + heading.title + "\nPath: " + heading.path + "\n";
}

/// Nothing if a row is invalid.
std::optional<Fields> fieldsOf(std::string_view report, const Heading& heading) {
    const std::string rows = rowsOf(heading);
    if (!report.starts_with(rows)) {
        return std::nullopt;
    }
    report.remove_prefix(rows.size());
    Fields fields{{"windowTitle", heading.title}, {"pathTextbox", heading.path}};
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (!report.starts_with(pieces[i].literal)) {
            return std::nullopt;
        }
        report.remove_prefix(pieces[i].literal.size());
        const auto end = i + 1 < pieces.size() ? report.find(pieces[i + 1].literal) : report.size();
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        fields.emplace(pieces[i].field, report.substr(0, end));
        report.remove_prefix(end);
    }
    const std::string& date = fields["date"];
    return date.empty() || date.contains('\n') ? std::nullopt : std::optional(std::move(fields));
}

} // namespace

std::string readableText(const std::string& bytes) {
    std::string text;
    icu::UnicodeString::fromUTF8(bytes).toUTF8String(text);
    return text;
}

Heading headingOf(const std::string& path) {
    const auto slash = path.rfind('/');
    return {readableText(path == "/" ? path : path.substr(slash + 1)), readableText(path)};
}

std::vector<Fields> reportsIn(std::string_view output, const std::vector<Heading>& headings) {
    std::vector<Fields> reports(headings.size());
    for (std::size_t i = 0; i < headings.size(); ++i) {
        const bool isLast = i + 1 == headings.size();
        const std::string separator = isLast ? "\n" : "\n\n" + rowsOf(headings[i + 1]);
        const auto end = isLast ? output.size() - 1 : output.find(separator, rowsOf(headings[i]).size());
        const bool isThere = end < output.size() && output.substr(end).starts_with(separator);
        auto fields = isThere ? fieldsOf(output.substr(0, end), headings[i]) : std::nullopt;
        if (!fields) {
            ADD_FAILURE() << "expected a report about " << headings[i].path << ", found:\n"
                          << output.substr(0, 10'000);
            return reports;
        }
        reports[i] = *std::move(fields);
        output.remove_prefix(isLast ? output.size() : end + 2);
    }
    EXPECT_EQ(output, "");
    return reports;
}

Fields reportIn(std::string_view output, const std::string& path) {
    return reportsIn(output, {headingOf(path)}).front();
}

} // namespace tolvane::tests
