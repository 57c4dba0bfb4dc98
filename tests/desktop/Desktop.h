// A desktop of a test's own: an X server without a screen, a window manager, a session bus and a home folder.
// Programs are used there from outside, by keys, the mouse and the clipboard, as a person uses them.
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

/// Asks again and again until the condition holds; false when it takes far too long.
[[nodiscard]] bool waitUntil(const std::function<bool()>& condition);

struct DesktopSetup {
    /// What the session bus starts when it is called.
    std::map<std::string, std::string> services = {};
    /// Besides the environment that every program gets here.
    std::vector<std::string> variables = {};
    std::string screen = "1280x1024";
};

/// A window to be seen on the desktop.
struct DesktopWindow {
    std::string id; ///< As the X server counts.
    std::string title;
};

/// When the test failed, a picture of the desktop is kept and what the programs complained of is printed, as
/// the desktop goes.
class Desktop {
public:
    /// A program without which there is no desktop and that is not installed; empty when all are there.
    static std::string missingProgram();

    /// Fails the test when something does not start.
    explicit Desktop(DesktopSetup setup = {});
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    ~Desktop();

    /// A folder for the test's files. The home folder is another one.
    const TemporaryFolder& files() const { return files_; }
    const TemporaryFolder& home() const { return home_; }

    /// What programs get for an environment here.
    std::vector<std::string> environment() const;

    /// Starts a program, which is ended with the desktop at the latest. What it writes to standard error is
    /// kept aside.
    Process& start(std::vector<std::string> command, const std::string& folder = {});
    Process& start(ProcessSetup setup);

    /// Waits for a program's end; nothing, and a failure, when it goes on and on.
    std::optional<ProcessOutcome> endOf(Process& program);

    /// Whether a program that was started here goes on.
    static bool isRunning(const Process& program);

    /// Runs a program to its end.
    ProcessOutcome run(std::vector<std::string> command) const;

    std::vector<DesktopWindow> windows() const;

    /// The windows of just this title.
    std::vector<std::string> windowsTitled(const std::string& title) const;

    /// The first window of this title, once there is one; empty, and a failure, when none comes.
    std::string waitForWindow(const std::string& title) const;

    /// Waits until no window has this title; otherwise fails the test.
    void waitUntilGone(const std::string& title) const;

    /// Waits until new windows have got what they get when they appear, which is the keyboard.
    void settle() const;

    /// The window that has the keyboard; empty when none has.
    std::string activeWindow() const;

    /// Gives the window the keyboard, and fails the test when it does not get it.
    void activate(const std::string& window) const;

    /// Presses keys in the window, one after the other. Each is spelled like "ctrl+shift+c" and "Return".
    void press(const std::string& window, const std::vector<std::string>& keys) const;

    /// Types into whatever has the keyboard.
    void type(const std::string& text) const;

    /// Clicks at a place in the window. Negative numbers count from the right and the lower edge.
    void click(const std::string& window, int x, int y) const;

    /// The text on the clipboard; empty when there is none.
    std::string clipboard() const;
    void setClipboard(const std::string& text);

    /// What is on the clipboard after the keys, once it is something else; empty, and a failure, when nothing
    /// comes.
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
