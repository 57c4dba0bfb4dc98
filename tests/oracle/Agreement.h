// Compares the program's reports with what other programs report about the same items.
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
    /// Those that changed each time, or vanished.
    std::vector<std::string> restless;
};

/// So many items below a folder at most, in the order in which it lists them; none if it cannot be listed.
std::vector<std::string> itemsBelow(const std::string& folder, std::size_t most);

/// Compares the program's reports about the items, as text and as JSON, with what other programs report
/// before and after. A difference fails the test, unless the item has changed meanwhile: then it is compared
/// again, a few times. All programs run as the given user.
Agreement expectAgreement(const std::vector<std::string>& paths, std::optional<std::uint32_t> user = {});

} // namespace tolvane::tests
