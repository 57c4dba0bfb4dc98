#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::architecture {

/// One preprocessing line of a source: `#include <vector>` has the name `include` and the rest `<vector>`.
///
/// Lines that a backslash joins are one directive, which stands where the first of them does.
struct Directive {
    std::size_t line = 0;
    std::string name;
    std::string rest;
};

/// Finds the preprocessing lines of a source in their order. What only looks like one, in a comment or in
/// a raw string literal, is left out.
std::vector<Directive> directivesOf(std::string_view text);

/// The identifiers in a directive's rest, in their order.
std::vector<std::string_view> identifiersOf(std::string_view rest);

} // namespace tolvane::architecture
