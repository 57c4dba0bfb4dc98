#pragma once

#include <string>

namespace tolvane::app {

/// The product's web addresses, set at build time only.
struct ProductAddresses {
    std::string support;
    /// Two updates pages, chosen by the system's version (`AppDelegate::openUpdates`).
    std::string updatesElCapitan;
    std::string updatesSierra;
    /// The property list of the current versions.
    std::string updateList;
    /// What the address of a download must contain to be offered.
    std::string downloadPrefix;
};

/// The addresses of this build.
ProductAddresses productAddresses();

} // namespace tolvane::app
