// Compares the program's reports with what other programs tell about the same items.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::tests {

struct Agreement {
    /// The items whose reports were compared.
    std::size_t compared = 0;
    /// Those that never stood still, or vanished, while they were looked at.
    std::vector<std::string> restless;
};

/// Lets the program report on the items, as text and as JSON, and looks at them with other programs before
/// and after. Whatever differs fails the test, unless the item itself has changed in between: then it is
/// compared again, a few times. All programs run as the given user.
Agreement expectAgreement(const std::vector<std::string>& paths, std::optional<std::uint32_t> user = {});

} // namespace tolvane::tests
