#pragma once

#include <string>

namespace tolvane::app {

/// The addresses that belong to the product rather than to the program.
struct ProductAddresses {
    /// The property list that names the current versions.
    std::string updateList;
    /// What the address of a download has to hold to be offered.
    std::string downloadPrefix;
};

/// The addresses that this program was built with.
ProductAddresses productAddresses();

} // namespace tolvane::app
