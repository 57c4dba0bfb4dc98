#pragma once

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>

namespace tolvane::tests {

/// A test with a temporary folder of its own.
class FolderTest : public testing::Test {
protected:
    const TemporaryFolder folder;
    /// Its path without links.
    const std::string real = std::filesystem::canonical(folder.path()).string();
};

/// Skips where the folder's file system has no extended attributes.
class AttributeTest : public FolderTest {
protected:
    void SetUp() override {
        if (!setExtendedAttribute(folder.file("probe"), "user.probe", "")) {
            GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
        }
    }

    static void setAttribute(const std::string& path, const std::string& name, std::string_view value) {
        EXPECT_TRUE(setExtendedAttribute(path, name, value)) << name << ": " << std::strerror(errno);
    }
};

} // namespace tolvane::tests
