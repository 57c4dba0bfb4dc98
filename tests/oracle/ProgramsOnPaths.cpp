#include "tests/oracle/ProgramsOnPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>

namespace tolvane::tests {

std::vector<std::string> splitAtNuls(std::string_view text) {
    std::vector<std::string> pieces;
    while (!text.empty()) {
        const auto end = std::min(text.find('\0'), text.size());
        pieces.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return pieces;
}

std::uint64_t numberIn(std::string_view digits, int base) {
    std::uint64_t value = 0;
    const char* const start = digits.data();
    const char* const end = start + digits.size();
    const auto [stop, fault] = std::from_chars(start, end, value, base);
    EXPECT_TRUE(fault == std::errc() && stop == end) << "no number: " << digits;
    return value;
}

} // namespace tolvane::tests
