#include "tests/desktop/Desktop.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <iostream>
#include <thread>
#include <utility>
#include <fcntl.h>
#include <sys/wait.h>

namespace tolvane::tests {

namespace {

constexpr auto longestWait = std::chrono::seconds(60);
constexpr auto pollInterval = std::chrono::milliseconds(20);

// New windows get the keyboard, and no key is the window manager's own.
constexpr const char* windowManagerSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew></focus>
  <placement><policy>Smart</policy></placement>
  <desktops><number>1</number></desktops>
  <keyboard></keyboard>
  <mouse></mouse>
</openbox_config>
)";

std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

} // namespace

bool waitUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + longestWait;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(pollInterval);
    }
    return true;
}

Desktop::Desktop(DesktopSetup setup) : setup_(std::move(setup)) {
    for (const char* const folder : {"runtime", "config", "data", "cache"}) {
        std::filesystem::permissions(home_.folder(folder), std::filesystem::perms::owner_all);
    }
    // Otherwise the program would request the update list.
    home_.folder("config/tolvane");
    home_.file("config/tolvane/tolvane.conf", "[General]\nnoUpdateCheck=true\n");
    startServer();
    bus_ = std::make_unique<SessionBus>(
        SessionBusSetup{.services = setup_.services, .environment = environmentWithoutBus()});
    startWindowManager();
}

Desktop::~Desktop() {
    if (testing::Test::HasFailure()) {
        keepEvidence();
    }
    programs_.clear();
    clipboardOwner_.reset();
    bus_.reset();
    windowManager_.reset();
}

void Desktop::startServer() {
    const auto nowhere = openedFile("/dev/null", O_WRONLY);
    // Without -noreset it would refuse clients at the moment after the last one has left.
    server_ = std::make_unique<Process>(ProcessSetup{
        .command =
            {"Xvfb", "-displayfd", "1", "-screen", "0", setup_.screen + "x24", "-nolisten", "tcp",
             "-noreset"},
        .errorDescriptor = nowhere.number()});
    EXPECT_TRUE(server_->waitForOutput([this](const std::string& out) {
        display_ = ":" + firstLine(out);
        return out.contains('\n');
    })) << "The X server does not start";
}

void Desktop::startWindowManager() {
    const auto nowhere = openedFile("/dev/null", O_WRONLY);
    windowManager_ = std::make_unique<Process>(ProcessSetup{
        .command = {"openbox", "--config-file", home_.file("openbox.xml", windowManagerSettings)},
        .environment = environment(),
        .outputDescriptor = nowhere.number(),
        .errorDescriptor = nowhere.number()});
    EXPECT_TRUE(waitUntil([this] {
        return run({"xprop", "-root", "_NET_SUPPORTING_WM_CHECK"}).out.contains("window id");
    })) << "The window manager does not start";
    // It announces itself before it is ready, and what it is asked meanwhile may wait for the next request.
    EXPECT_TRUE(waitUntil([this] {
        xdotool({"set_num_desktops", "2"});
        return firstLine(xdotool({"get_num_desktops"}).out) == "2";
    })) << "The window manager does not answer";
}

std::vector<std::string> Desktop::environmentWithoutBus() const {
    std::vector<std::string> variables = plainEnvironment();
    std::erase(variables, "LC_ALL=C");
    variables.insert(
        variables.end(),
        {"LC_ALL=C.UTF-8", "DISPLAY=" + display_, "HOME=" + home_.path(),
         "XDG_RUNTIME_DIR=" + home_.path("runtime"), "XDG_CONFIG_HOME=" + home_.path("config"),
         "XDG_DATA_HOME=" + home_.path("data"), "XDG_CACHE_HOME=" + home_.path("cache"), "GDK_BACKEND=x11",
         "GSETTINGS_BACKEND=memory"});
    variables.insert(variables.end(), setup_.variables.begin(), setup_.variables.end());
    return variables;
}

std::vector<std::string> Desktop::environment(const std::vector<std::string>& variables) const {
    std::vector<std::string> all = environmentWithoutBus();
    all.push_back("DBUS_SESSION_BUS_ADDRESS=" + bus_->address());
    for (const std::string& variable : variables) {
        const std::string name = variable.substr(0, variable.find('=') + 1);
        std::erase_if(all, [&name](const std::string& other) { return other.starts_with(name); });
        all.push_back(variable);
    }
    return all;
}

Process& Desktop::start(
    std::vector<std::string> command, const std::string& folder, const std::vector<std::string>& variables) {
    // Into a file, since a full pipe would stop the program.
    const std::string complaints = home_.path("complaints-" + std::to_string(programs_.size()));
    const auto file = openedFile(complaints, O_WRONLY | O_CREAT);
    programs_.push_back(
        {std::make_unique<Process>(ProcessSetup{
             .command = std::move(command),
             .environment = environment(variables),
             .folder = folder,
             .errorDescriptor = file.number()}),
         complaints});
    return *programs_.back().process;
}

bool Desktop::isRunning(const Process& program) {
    siginfo_t state{};
    return waitid(P_PID, static_cast<id_t>(program.id()), &state, WEXITED | WNOHANG | WNOWAIT) == 0
           && state.si_pid == 0;
}

std::optional<ProcessOutcome> Desktop::endOf(Process& program) {
    if (!waitUntil([&program] { return !isRunning(program); })) {
        ADD_FAILURE() << "The program does not end";
        return std::nullopt;
    }
    ProcessOutcome outcome = program.finish();
    for (const Started& started : programs_) {
        if (started.process.get() == &program) {
            outcome.err = contentsOfFile(started.complaints);
        }
    }
    return outcome;
}

ProcessOutcome Desktop::run(std::vector<std::string> command) const {
    return tests::run({.command = std::move(command), .environment = environment()});
}

ProcessOutcome Desktop::xdotool(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "xdotool");
    return run(std::move(arguments));
}

std::vector<DesktopWindow> Desktop::windows() const {
    // A window may close between the two questions.
    constexpr int mostTries = 20;
    for (int tries = 0; tries < mostTries; ++tries) {
        const auto ids = linesOf(xdotool({"search", "--onlyvisible", "--name", "."}).out);
        if (ids.empty()) {
            return {};
        }
        std::vector<std::string> question;
        for (const std::string& id : ids) {
            question.insert(question.end(), {"getwindowname", id});
        }
        const auto titles = linesOf(xdotool(question).out);
        if (titles.size() == ids.size()) {
            std::vector<DesktopWindow> windows(ids.size());
            for (std::size_t i = 0; i < ids.size(); ++i) {
                windows[i] = {ids[i], titles[i]};
            }
            return windows;
        }
    }
    ADD_FAILURE() << "The windows cannot be counted";
    return {};
}

std::vector<std::string> Desktop::windowsTitled(const std::string& title) const {
    std::vector<std::string> ids;
    for (const DesktopWindow& window : windows()) {
        if (window.title == title) {
            ids.push_back(window.id);
        }
    }
    return ids;
}

std::string Desktop::waitForWindow(const std::string& title) const {
    std::vector<std::string> ids;
    EXPECT_TRUE(waitUntil([&] {
        ids = windowsTitled(title);
        return !ids.empty();
    })) << "No window is titled "
        << title;
    settle();
    return ids.empty() ? std::string() : ids.front();
}

void Desktop::waitUntilGone(const std::string& title) const {
    EXPECT_TRUE(waitUntil([&] { return windowsTitled(title).empty(); }))
        << "A window titled " << title << " stays";
}

void Desktop::settle() const {
    // The window manager handles requests in their order, so once this one has an effect, those before it
    // have theirs.
    const std::string number = firstLine(xdotool({"get_num_desktops"}).out) == "1" ? "2" : "1";
    xdotool({"set_num_desktops", number});
    EXPECT_TRUE(waitUntil([&] { return firstLine(xdotool({"get_num_desktops"}).out) == number; }))
        << "The window manager does not answer";
}

std::string Desktop::activeWindow() const {
    return firstLine(xdotool({"getactivewindow"}).out);
}

void Desktop::activate(const std::string& window) const {
    const auto hasKeyboard = [&] {
        return activeWindow() == window && firstLine(xdotool({"getwindowfocus"}).out) == window;
    };
    if (!hasKeyboard()) {
        xdotool({"windowactivate", window});
        EXPECT_TRUE(waitUntil(hasKeyboard)) << "Window " << window << " does not get the keyboard";
    }
}

void Desktop::press(const std::string& window, const std::vector<std::string>& keys) const {
    activate(window);
    std::vector<std::string> arguments{"key"};
    arguments.insert(arguments.end(), keys.begin(), keys.end());
    EXPECT_EQ(xdotool(arguments).status, 0);
}

void Desktop::type(const std::string& text) const {
    EXPECT_EQ(xdotool({"type", "--delay", "3", "--", text}).status, 0);
}

void Desktop::click(const std::string& window, int x, int y) const {
    activate(window);
    std::map<std::string, int> geometry;
    for (const std::string& line : linesOf(xdotool({"getwindowgeometry", "--shell", window}).out)) {
        const auto sign = line.find('=');
        geometry[line.substr(0, sign)] = std::atoi(line.substr(sign + 1).c_str());
    }
    x += x < 0 ? geometry["WIDTH"] : 0;
    y += y < 0 ? geometry["HEIGHT"] : 0;
    EXPECT_EQ(
        xdotool({"mousemove", "--window", window, std::to_string(x), std::to_string(y), "click", "1"}).status,
        0);
}

std::string Desktop::clipboard() const {
    // An owner that ends meanwhile never answers, so callers repeat the question.
    return run({"timeout", "3", "xclip", "-o", "-selection", "clipboard", "-target", "UTF8_STRING"}).out;
}

void Desktop::setClipboard(const std::string& text) {
    // It serves the text until another program takes the clipboard.
    clipboardOwner_.reset();
    const auto nowhere = openedFile("/dev/null", O_WRONLY);
    clipboardOwner_ = std::make_unique<Process>(ProcessSetup{
        .command = {"xclip", "-i", "-quiet", "-selection", "clipboard", home_.file("clipboard", text)},
        .environment = environment(),
        .errorDescriptor = nowhere.number()});
    EXPECT_TRUE(waitUntil([&] { return clipboard() == text; })) << "The clipboard does not take the text";
}

std::string Desktop::copiedBy(const std::string& window, const std::vector<std::string>& keys) {
    const std::string before = "not copied yet";
    setClipboard(before);
    press(window, keys);
    std::string text;
    const bool isCopied = waitUntil([&] {
        text = clipboard();
        return !text.empty() && text != before;
    });
    EXPECT_TRUE(isCopied) << keys.back() << " copies nothing";
    return isCopied ? text : std::string();
}

void Desktop::keepEvidence() const {
    const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
    const std::string picture = testing::TempDir() + "tolvane-desktop-" + test->name() + ".png";
    if (isInstalled("import") && run({"import", "-window", "root", picture}).status == 0) {
        std::cerr << "The desktop as it was: " << picture << "\n";
    }
    for (const DesktopWindow& window : windows()) {
        std::cerr << "Window " << window.id << ": " << window.title << "\n";
    }
    for (const Started& started : programs_) {
        std::cerr << contentsOfFile(started.complaints);
    }
}

} // namespace tolvane::tests
