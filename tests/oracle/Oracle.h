// What stat(1), getfattr(1) and getent(1) report about items, to compare the program with.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::tests {

struct ItemFacts {
    std::uint64_t mode = 0;
    std::uint64_t size = 0;
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t links = 0;
    std::uint64_t user = 0;
    std::uint64_t group = 0;
    /// "2024-08-09 18:27:02.123456789 +0000"; empty if the file system keeps none.
    std::string created = {};
    std::string modified = {};
    /// Empty if the account databases have none.
    std::string userName = {};
    std::string groupName = {};
    /// Names and values; through a final symbolic link. Nothing if not all could be read.
    std::optional<std::map<std::string, std::string>> attributes = {};

    bool operator==(const ItemFacts&) const = default;
};

/// Looks at items by their absolute paths, as the given user. What stat cannot look at is left out.
std::map<std::string, ItemFacts> lookAt(
    const std::vector<std::string>& paths, std::optional<std::uint32_t> user = {});

} // namespace tolvane::tests
