/// Explanations as lines, for the tests of the families.
#pragma once

#include "attributes/Explanation.h"
#include "tests/support/AttributeValues.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <source_location>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {

inline attributes::Explanation explained(
    std::string_view name, std::string_view value, const attributes::Questions& questions = {}) {
    return attributes::explain(name, std::as_bytes(std::span(value)), questions);
}

/// "Name: text" for each field.
inline std::vector<std::string> linesOf(const attributes::Explanation& explanation) {
    std::vector<std::string> lines;
    for (const attributes::Field& field : explanation.fields) {
        lines.push_back(field.name + ": " + field.text);
    }
    return lines;
}

inline std::vector<std::string> explainedLines(std::string_view name, std::string_view value) {
    const attributes::Explanation explanation = explained(name, value);
    EXPECT_THAT(explanation.notes, testing::IsEmpty());
    return linesOf(explanation);
}

inline std::string explainedSummary(std::string_view name, std::string_view value) {
    return explained(name, value).summary;
}

/// The complaint about a value that is not in its form; then its only field has the bytes. Empty if it is.
inline std::string complaintAbout(std::string_view name, std::string_view value) {
    const attributes::Explanation explanation = explained(name, value);
    if (explanation.notes.empty() || !explanation.notes.front().starts_with("Not in the expected form: ")) {
        return {};
    }
    EXPECT_EQ(explanation.notes.size(), 1U);
    EXPECT_EQ(explanation.fields.at(0).name, "Bytes");
    return explanation.notes.front();
}

/// Answers in which every account has a name.
inline attributes::Questions knownAccounts() {
    return {
        [](attributes::AccountKind kind, std::uint32_t number) -> std::optional<std::string> {
            return (kind == attributes::AccountKind::user ? "u" : "g") + std::to_string(number);
        },
        std::nullopt};
}

using Place = std::source_location;

/// A failure names the caller's line and the attribute.
inline testing::ScopedTrace traceOf(const Place& place, std::string_view name) {
    return {place.file_name(), static_cast<int>(place.line()), name};
}

/// The value is explained by these lines alone, without a note.
inline void expectLines(
    std::string_view name,
    std::string_view value,
    const std::vector<std::string>& lines,
    const attributes::Questions& questions = {},
    const Place& place = Place::current()) {
    const testing::ScopedTrace trace = traceOf(place, name);
    const attributes::Explanation explanation = explained(name, value, questions);
    EXPECT_THAT(explanation.notes, testing::IsEmpty());
    EXPECT_EQ(linesOf(explanation), lines);
}

/// None of the values is in the form that the name has.
inline void expectRefused(
    std::string_view name, const std::vector<std::string>& values, const Place& place = Place::current()) {
    const testing::ScopedTrace trace = traceOf(place, name);
    for (const std::string& value : values) {
        EXPECT_NE(complaintAbout(name, value), "") << testing::PrintToString(value);
    }
}

/// Every value that is cut before its end is refused.
inline void expectEveryCutRefused(
    std::string_view name, std::string_view value, const Place& place = Place::current()) {
    const testing::ScopedTrace trace = traceOf(place, name);
    EXPECT_EQ(complaintAbout(name, value), "");
    for (std::size_t length = 0; length < value.size(); ++length) {
        EXPECT_NE(complaintAbout(name, value.substr(0, length)), "") << "of " << length << " bytes";
    }
}

/// Both: the value is explained by these lines, and refused where it is cut.
inline void expectRecord(
    std::string_view name,
    std::string_view value,
    const std::vector<std::string>& lines,
    const Place& place = Place::current()) {
    expectLines(name, value, lines, {}, place);
    expectEveryCutRefused(name, value, place);
}

} // namespace tolvane::tests
