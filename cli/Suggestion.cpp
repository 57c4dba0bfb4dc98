#include "cli/Suggestion.h"

#include <algorithm>
#include <vector>

namespace tolvane::cli {

namespace {

/// How many letters have to be put in, left out, replaced or swapped with their neighbour.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                row[j] = i + j;
                continue;
            }
            const bool isEqual = a[i - 1] == b[j - 1];
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (isEqual ? 0U : 1U)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
        beforeLast.swap(last);
        last.swap(row);
    }
    return last[b.size()];
}

} // namespace

std::optional<std::string> nearestWord(std::string_view typed, std::span<const std::string> words) {
    constexpr std::size_t most = 2;
    std::optional<std::string> nearest;
    std::size_t least = most + 1;
    for (const std::string& word : words) {
        // A long text is no slip of the finger, and comparing it would take long.
        const bool isAsLong = typed.size() <= word.size() + most && word.size() <= typed.size() + most;
        const std::size_t difference = isAsLong ? distance(typed, word) : least;
        if (difference < least && difference < word.size() && difference < typed.size()) {
            least = difference;
            nearest = word;
        }
    }
    return nearest;
}

} // namespace tolvane::cli
