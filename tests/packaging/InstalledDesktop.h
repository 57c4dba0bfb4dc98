/// The files of the desktop's package in a folder of their own, and a desktop that knows little else.
#pragma once

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <optional>
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

/// `tolvane` is a program here that only records its arguments.
class InstalledDesktop {
public:
    /// A program that is needed but missing; empty if there is none.
    static std::string missingProgram();

    InstalledDesktop();

    /// What other desktops have in /usr/share.
    std::string share() const { return prefix_.path("share"); }
    const TemporaryFolder& home() const { return home_; }

    /// Installs another program that opens these MIME types, or one more entry that starts ours.
    void addEntry(const std::string& name, const std::string& kinds, const std::string& command = "true");

    ProcessOutcome run(std::vector<std::string> command) const;

    /// Uses every entry in the menus of file managers, for these files.
    std::vector<UsedEntry> useMenus(const std::vector<std::string>& files) const;

    /// Whether the program was started by others than useMenus.
    bool wasStarted() const;

private:
    /// Renews what desktops look MIME types up in.
    void updateCache() const;

    TemporaryFolder prefix_;
    TemporaryFolder others_;
    TemporaryFolder home_;
};

/// Tests that need such a desktop are skipped where one of its programs is missing.
class InstalledDesktopTest : public testing::Test {
protected:
    void SetUp() override {
        if (const std::string missing = InstalledDesktop::missingProgram(); !missing.empty()) {
            GTEST_SKIP() << missing << " is not installed";
        }
        desktop_.emplace();
    }

    InstalledDesktop& desktop() { return *desktop_; }

private:
    std::optional<InstalledDesktop> desktop_;
};

} // namespace tolvane::tests
