/// Explanations as lines, for the tests of the families.
#pragma once

#include "attributes/Explanation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

/// Every value that is cut before its end is refused.
inline void expectEveryCutRefused(std::string_view name, std::string_view value) {
    EXPECT_EQ(complaintAbout(name, value), "");
    for (std::size_t length = 0; length < value.size(); ++length) {
        EXPECT_NE(complaintAbout(name, value.substr(0, length)), "") << name << " of " << length << " bytes";
    }
}

/// Answers in which every account has a name.
inline attributes::Questions knownAccounts() {
    return {
        [](attributes::AccountKind kind, std::uint32_t number) -> std::optional<std::string> {
            return (kind == attributes::AccountKind::user ? "u" : "g") + std::to_string(number);
        },
        std::nullopt};
}

} // namespace tolvane::tests
