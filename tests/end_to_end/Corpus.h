// Items of every kind that a file system has, made for the tests.
#pragma once

#include "tests/support/TemporaryFolder.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tolvane::tests {

/// Each of these adds items to the folder and returns their paths.
std::vector<std::string> addKinds(const TemporaryFolder& folder);
std::vector<std::string> addPermissions(const TemporaryFolder& folder);
std::vector<std::string> addContents(const TemporaryFolder& folder);
std::vector<std::string> addDates(const TemporaryFolder& folder);
std::vector<std::string> addOddNames(const TemporaryFolder& folder);

/// Attributes of many sizes and names; nothing if the file system takes none from users. `largest` is the
/// size of the largest value.
std::vector<std::string> addAttributes(const TemporaryFolder& folder, std::size_t largest);

/// Names that programs handle wrongly, in several encodings, short ones and some of the longest length.
std::vector<std::string> namesOfEveryKind();

/// The state of items that a program must not change, not even by reading them.
class UntouchedItems {
public:
    /// Sets their dates so that each reading changes the access date, and stores their state.
    explicit UntouchedItems(const std::vector<std::string>& paths);

    /// Expects the same dates, sizes and modes.
    void expectSameStatus() const;

    /// Expects the same contents. This reads the items.
    void expectSameContents() const;

private:
    using Status = std::array<std::int64_t, 8>;
    static Status storedStatusOf(const std::string& path);
    static std::string contentsOf(const std::string& path);

    std::map<std::string, Status> statuses_;
    std::map<std::string, std::string> contents_;
};

} // namespace tolvane::tests
