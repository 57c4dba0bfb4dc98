// A desktop for one test: an X server without a screen, a window manager, a session bus and a home folder.
// Programs are used there as a person uses them, by keys, the mouse and the clipboard.
#pragma once

#include "tests/support/Process.h"
#include "tests/support/SessionBus.h"
#include "tests/support/TemporaryFolder.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::tests {

/// Repeats the question until the condition holds; false if it takes far too long.
[[nodiscard]] bool waitUntil(const std::function<bool()>& condition);

struct DesktopSetup {
    /// The services that the session bus starts on demand.
    std::map<std::string, std::string> services = {};
    /// Additions to the environment of every program.
    std::vector<std::string> variables = {};
    std::string screen = "1280x1024";
};

struct DesktopWindow {
    std::string id; ///< The X server's.
    std::string title;
};

/// If the test failed, the destructor saves a picture of the desktop and prints what the programs wrote to
/// standard error.
class Desktop {
public:
    /// Fails the test if something does not start.
    explicit Desktop(DesktopSetup setup = {});
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    ~Desktop();

    /// A folder for the test's files, and the home folder.
    const TemporaryFolder& files() const { return files_; }
    const TemporaryFolder& home() const { return home_; }

    /// The environment of programs here. The given variables replace others of the same name.
    std::vector<std::string> environment(const std::vector<std::string>& variables = {}) const;

    /// Starts a program, which is ended with the desktop at the latest. The given variables are added to its
    /// environment.
    Process& start(
        std::vector<std::string> command,
        const std::string& folder = {},
        const std::vector<std::string>& variables = {});

    /// Waits for a program's end; nothing, and a failure, if it does not end.
    std::optional<ProcessOutcome> endOf(Process& program);

    static bool isRunning(const Process& program);

    /// Runs a program to its end.
    ProcessOutcome run(std::vector<std::string> command) const;

    std::vector<DesktopWindow> windows() const;

    std::vector<std::string> windowsTitled(const std::string& title) const;

    /// The first window of this title, once there is one; empty, and a failure, if none appears.
    std::string waitForWindow(const std::string& title) const;

    /// Waits until no window has this title; otherwise fails the test.
    void waitUntilGone(const std::string& title) const;

    /// Waits until new windows have got the keyboard.
    void settle() const;

    /// The window that has the keyboard, if any.
    std::string activeWindow() const;

    /// Gives the window the keyboard, and fails the test if it does not get it.
    void activate(const std::string& window) const;

    /// Presses keys in the window, one after the other. They are written like "ctrl+shift+c" and "Return".
    void press(const std::string& window, const std::vector<std::string>& keys) const;

    /// Types into the window that has the keyboard.
    void type(const std::string& text) const;

    /// Clicks at a place in the window. Negative numbers count from the right and the lower edge.
    void click(const std::string& window, int x, int y) const;

    /// The text on the clipboard, if any.
    std::string clipboard() const;
    void setClipboard(const std::string& text);

    /// What is on the clipboard after the keys, once it has changed; empty, and a failure, if it does not.
    std::string copiedBy(const std::string& window, const std::vector<std::string>& keys);

private:
    void startServer();
    void startWindowManager();
    std::vector<std::string> environmentWithoutBus() const;
    ProcessOutcome xdotool(std::vector<std::string> arguments) const;
    void keepEvidence() const;

    DesktopSetup setup_;
    TemporaryFolder home_;
    TemporaryFolder files_;
    std::unique_ptr<Process> server_;
    std::string display_;
    std::unique_ptr<SessionBus> bus_;
    std::unique_ptr<Process> windowManager_;
    std::unique_ptr<Process> clipboardOwner_;
    struct Started {
        std::unique_ptr<Process> process;
        std::string complaints;
    };
    std::vector<Started> programs_;
};

} // namespace tolvane::tests
