#include "tests/oracle/ProgramsOnPaths.h"

#include <gtest/gtest.h>

#include <charconv>
#include <sstream>
#include <utility>

namespace tolvane::tests {

std::map<std::string, std::vector<std::string>> statOf(
    std::vector<std::string> command,
    const std::vector<std::string>& facts,
    const std::vector<std::string>& paths,
    std::optional<std::uint32_t> user) {
    std::string format = "--printf=%n\\0";
    for (const auto& fact : facts) {
        format += fact + "\\0";
    }
    command.insert(command.end(), {format, "--"});
    std::map<std::string, std::vector<std::string>> answers;
    runInBatches(command, paths, user, [&](const ProcessOutcome& outcome, const auto&) {
        std::istringstream output(outcome.out);
        std::string text;
        while (std::getline(output, text, '\0')) {
            auto& texts = answers[text];
            texts.clear();
            while (texts.size() < facts.size() && std::getline(output, text, '\0')) {
                texts.push_back(text);
            }
            ASSERT_EQ(texts.size(), facts.size()) << outcome.err;
        }
    });
    return answers;
}

std::uint64_t numberIn(std::string_view digits, int base) {
    std::uint64_t value = 0;
    const char* const start = digits.data();
    const char* const end = start + digits.size();
    const auto [stop, fault] = std::from_chars(start, end, value, base);
    EXPECT_TRUE(fault == std::errc() && stop == end) << "not a number: " << digits;
    return value;
}

} // namespace tolvane::tests
