// What the tests of the desktop program share: a desktop, the program on it, and the terminal program to
// compare with.
#pragma once

#include "tests/desktop/Desktop.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::tests {

inline constexpr const char* startWindowTitle = "Tolvane";
inline constexpr const char* resolverTitle = "Bookmark Resolver — Tolvane";
inline constexpr const char* savePanelTitle = "Save — Tolvane";
inline constexpr const char* openPanelTitle = "Open — Tolvane";

/// What a window that is about a file has for a title.
std::string titleOf(const std::string& name);

std::string desktopProgram();
std::string terminalProgram();

class DesktopTest : public testing::Test {
protected:
    /// Skips the test where a program that it takes is not installed.
    void SetUp() override;
    void TearDown() override { desktop_.reset(); }

    /// What the desktop is to have.
    virtual DesktopSetup setup() const { return {}; }

    Desktop& desktop() { return *desktop_; }

    /// A file in the test's folder.
    std::string file(const std::string& name, const std::string& contents = "contents\n");

    /// Starts the desktop program.
    Process& startTolvane(std::vector<std::string> arguments, const std::string& folder = {});

    /// Starts the desktop program and waits for its end, which has to be a good one: it is expected to hand
    /// over to one that runs.
    void handOver(std::vector<std::string> arguments, const std::string& folder = {});

    /// Expects that the program ends, without an error and without a word.
    void expectGoodEnd(Process& program);

    /// Presses Ctrl+Q in the window and expects a good end.
    void quit(const std::string& window, Process& program);

    /// What the terminal program prints.
    std::string printed(std::vector<std::string> arguments);

    /// The fields of a details window on the item, by the names of their outlets.
    std::map<std::string, std::string> report(const std::string& path);

private:
    std::optional<Desktop> desktop_;
};

} // namespace tolvane::tests
