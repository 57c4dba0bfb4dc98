// A desktop, the desktop program on it, and the terminal program to compare with.
#pragma once

#include "tests/desktop/Desktop.h"
#include "tests/support/Programs.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {

inline constexpr const char* startWindowTitle = "Tolvane";
inline constexpr const char* alertTitle = "Tolvane";
inline constexpr const char* resolverTitle = "Bookmark Resolver — Tolvane";
inline constexpr const char* savePanelTitle = "Save — Tolvane";
inline constexpr const char* openPanelTitle = "Open — Tolvane";

/// The title of a window about a file.
std::string titleOf(const std::string& name);

class DesktopTest : public testing::Test {
protected:
    /// Skips the test if a required program is not installed.
    void SetUp() override;
    void TearDown() override { desktop_.reset(); }

    virtual DesktopSetup setup() const { return {}; }

    Desktop& desktop() { return *desktop_; }

    /// A file in the test's folder.
    std::string file(const std::string& name, const std::string& contents = "contents\n");

    /// Starts the desktop program.
    Process& startTolvane(
        std::vector<std::string> arguments,
        const std::string& folder = {},
        const std::vector<std::string>& variables = {});

    /// Starts the desktop program with a new file of this name, and waits for its window.
    std::pair<Process&, std::string> startWith(const std::string& name);

    /// Starts the desktop program where another instance runs, and expects that it passes its arguments on
    /// and ends.
    void handOver(std::vector<std::string> arguments, const std::string& folder = {});

    /// Expects that the program ends without an error and without output.
    void expectGoodEnd(Process& program);

    /// Presses Ctrl+Q in the window and expects a good end.
    void quit(const std::string& window, Process& program);

    /// Waits for as many alerts as keys, one after the other, and answers each by its key.
    void answerAlerts(const std::vector<std::string>& keys);

    /// Waits for a file panel, types the path into it and presses Return.
    void answerPanel(const std::string& title, const std::string& path);

    /// Calls a method of the interface org.freedesktop.Application.
    ProcessOutcome callApplication(std::vector<std::string> methodAndArguments);

    /// What the terminal program prints, and the same without its final line feed.
    std::string printed(std::vector<std::string> arguments);
    std::string printedLine(std::vector<std::string> arguments);

    /// The fields of a details window on the item, by the names of their outlets.
    std::map<std::string, std::string> report(const std::string& path);

private:
    std::optional<Desktop> desktop_;
};

/// Takes the place of the program that opens web addresses.
class Opener {
public:
    Opener();

    /// Makes programs find it.
    std::string pathVariable() const { return "PATH=" + folder_.path() + ":/usr/local/bin:/usr/bin:/bin"; }

    /// For each call, the number of the arguments and each argument in lines.
    std::string calls() const;

private:
    TemporaryFolder folder_;
};

} // namespace tolvane::tests
