#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::architecture {

/// One place where a source breaks the layering: what the include rules exist to report.
///
/// Prints as `file:line: text: reason`, which editors and terminals turn into a link.
struct Violation {
    std::string file;
    std::size_t line = 0;
    std::string text;
    std::string reason;

    friend bool operator==(const Violation&, const Violation&) = default;
};

std::ostream& operator<<(std::ostream& stream, const Violation& violation);

/// Says what in one source breaks the layering of the folders, so that a wrong dependency fails the tests
/// instead of growing roots.
///
/// `file` is the source's path from the repository's root, with '/' between names; it alone decides what
/// the source may include. Includes in comments and in raw string literals are not counted. The answer is
/// in the order of the lines, and is empty when all is well.
std::vector<Violation> violationsIn(std::string_view file, std::string_view text);

} // namespace tolvane::architecture
