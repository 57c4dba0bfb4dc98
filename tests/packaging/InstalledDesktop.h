/// The files of the desktop's package in a folder of their own, and a desktop that knows little else.
#pragma once

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::tests {

/// What the program got when an entry in a file manager's menu was used.
struct UsedEntry {
    /// The entry's file, below the folder of shared data.
    std::string file;
    std::string label;
    std::vector<std::string> arguments;
};

/// A desktop where `tolvane` only records its arguments. Skips where one of its programs is missing.
class InstalledDesktop : public testing::Test {
protected:
    void SetUp() override;

    /// What other desktops have in /usr/share.
    std::string share() const { return prefix_.path("share"); }

    /// Installs another program that opens these MIME types, or one more entry that starts ours.
    void addEntry(const std::string& name, const std::string& kinds, const std::string& command = "true");

    ProcessOutcome runHere(std::vector<std::string> command) const;

    /// Uses every entry in the menus of file managers, for these files.
    std::vector<UsedEntry> useMenus(const std::vector<std::string>& files) const;

    TemporaryFolder home;

private:
    /// Renews what desktops look MIME types up in.
    void updateCache() const;

    TemporaryFolder prefix_;
    TemporaryFolder others_;
};

} // namespace tolvane::tests
