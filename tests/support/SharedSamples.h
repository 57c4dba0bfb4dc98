/// Samples that others made, which are not ours to publish: only where a folder with them is beside the
/// checkout.
#pragma once

#include "platform/values/Value.h"
#include "tests/support/ScriptedSources.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {

/// Tests that skip themselves where this folder of samples is missing.
class SharedSamples : public testing::Test {
protected:
    explicit SharedSamples(const std::string& name)
        : folder(std::filesystem::path(TOLVANE_SOURCE_DIR "/../shared/data/" + name).lexically_normal()) {}

    void SetUp() override {
        if (!std::filesystem::is_directory(folder)) {
            GTEST_SKIP() << "there is no folder of samples at " << folder;
        }
    }

    std::string text(const std::string& name) const { return contentsOfFile(folder / name); }
    platform::Data bytes(const std::string& name) const { return bytesOf(text(name)); }

    /// The rows of a table below its head, with at least so many cells each.
    std::vector<std::vector<std::string>> rowsOf(const std::string& name, std::size_t fewest) const {
        std::vector<std::vector<std::string>> rows;
        std::istringstream table(text(name));
        std::string line;
        std::getline(table, line);
        while (std::getline(table, line)) {
            std::istringstream rest(line);
            std::vector<std::string>& cells = rows.emplace_back();
            for (std::string cell; std::getline(rest, cell, '\t');) {
                cells.push_back(std::move(cell));
            }
            cells.resize(std::max(cells.size(), fewest));
        }
        return rows;
    }

    const std::filesystem::path folder;
};

} // namespace tolvane::tests
