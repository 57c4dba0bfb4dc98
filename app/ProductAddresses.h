#pragma once

#include <string>

namespace tolvane::app {

/// The web addresses that belong to the product rather than to the program. Whoever builds the program
/// chooses them; nothing that runs does.
struct ProductAddresses {
    std::string support;
    /// Two pages of updates; which suits is told by the system's version (`AppDelegate::openUpdates`).
    std::string updatesElCapitan;
    std::string updatesSierra;
    /// The property list that names the current versions.
    std::string updateList;
    /// What the address of a download has to hold to be offered.
    std::string downloadPrefix;
};

/// The addresses that this program was built with.
ProductAddresses productAddresses();

} // namespace tolvane::app
