#include "app/desktop/Launch.h"

#include "app/LaunchArguments.h"
#include "app/ProductAddresses.h"
#include "app/desktop/Desktop.h"
#include "app/desktop/DesktopSystem.h"
#include "platform/posix/CurrentDirectory.h"
#include "platform/posix/FileDescriptorStreams.h"
#include "platform/qt/application/QtApplication.h"
#include "platform/qt/application/QtUserDefaults.h"
#include "platform/qt/text/VisibleText.h"

#include <QApplication>
#include <QIcon>
#include <QLatin1String>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tolvane::app {

namespace {

constexpr int wrongUsage = 2;
constexpr QLatin1String identifier("example.tolvane.tolvane");

void complain(const std::string& sentence) {
    static_cast<void>(std::fputs(("tolvane: " + sentence + "\n").c_str(), stderr));
}

int print(const std::string& text) {
    const bool written = std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    if (!written) {
        complain("standard output cannot be written");
    }
    return written ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// The program's arguments. Qt removes its own options from them, except after "--", where names follow.
class SharedArguments {
public:
    SharedArguments(int count, char** arguments)
        : arguments_(arguments)
        , names_(std::find_if(
              arguments, arguments + count, [](const char* text) { return std::string_view(text) == "--"; }))
        , end_(arguments + count)
        , countForQt_(static_cast<int>(names_ - arguments)) {}

    /// Changed by Qt, which keeps a reference to it.
    int& countForQt() { return countForQt_; }
    char** forQt() const { return arguments_; }

    /// What "--help" and "--version" print. They need no display, so they are looked for before Qt removes
    /// its options, until when nothing else can be parsed.
    std::optional<std::string> earlyText() const {
        std::vector<std::string> asking;
        std::copy_if(arguments_, names_, std::back_inserter(asking), [](std::string_view text) {
            return text == "--help" || text == "--version";
        });
        const LaunchRequest request = readLaunchArguments(asking, &platform::currentDirectory);
        const auto* const asked = std::get_if<PrintText>(&request);
        return asked == nullptr ? std::nullopt : std::optional(asked->text);
    }

    /// What the arguments ask for that Qt has left.
    LaunchRequest request() const {
        std::vector<std::string> given(arguments_ + std::min(countForQt_, 1), arguments_ + countForQt_);
        given.insert(given.end(), names_, end_);
        return readLaunchArguments(given, &platform::currentDirectory);
    }

private:
    char** arguments_;
    char** names_;
    char** end_;
    int countForQt_;
};

/// The theme's icon, or the compiled-in one if the program is not installed. Finding and drawing it takes a
/// quarter of the start, so the first window does not wait for it; panels use the desktop entry's icon.
void setWindowIconLater() {
    constexpr std::chrono::milliseconds afterTheFirstWindow{500};
    QTimer::singleShot(afterTheFirstWindow, qApp, [] {
        QApplication::setWindowIcon(QIcon::fromTheme(identifier, QIcon(":/" + identifier + ".svg")));
    });
}

/// How the program ended, with everything closed but the system's object and Qt's.
struct Ending {
    int status = EXIT_SUCCESS;
    bool hasAskedTheNetwork = false;
};

Ending runDesktop(const LaunchRequest& request, DesktopSystem& system) {
    const std::optional<DesktopRequest> first = system.start(request);
    if (!first) {
        return {};
    }
    Desktop desktop(productAddresses(), system);
    desktop.launch(*first);
    setWindowIconLater();
    const int status = desktop.run();
    return {status, desktop.hasAskedTheNetwork()};
}

Ending carryOut(const LaunchRequest& request, DesktopSystem& system) {
    if (const auto* const text = std::get_if<PrintText>(&request)) {
        return {print(text->text)};
    }
    if (const auto* const error = std::get_if<UsageError>(&request)) {
        // A file name may contain control characters.
        complain(platform::visibleText(error->sentence).toStdString() + "\nTry 'tolvane --help'.");
        return {wrongUsage};
    }
    if (const auto* const named = std::get_if<ShowFileNames>(&request); named && named->urls.empty()) {
        return {};
    }
    return runDesktop(request, system);
}

} // namespace

int launch(int count, char** arguments, const SystemMaker& makeSystem) {
    platform::makeWriteFailuresErrors();
    SharedArguments shared(count, arguments);
    if (const auto text = shared.earlyText()) {
        return print(*text);
    }

    // The system's object goes first, and Qt's comes last.
    std::optional<QApplication> qt;
    std::unique_ptr<DesktopSystem> system = makeSystem(complain);
    auto displayCheck = std::make_unique<platform::DisplayCheck>();
    qt.emplace(shared.countForQt(), shared.forQt());
    displayCheck.reset();
    QApplication::setApplicationName("tolvane");
    QApplication::setApplicationDisplayName("Tolvane");
    QApplication::setDesktopFileName(identifier);
    platform::keepToolkitSettingsBesideOurs();

    const Ending ending = carryOut(shared.request(), *system);
    if (ending.hasAskedTheNetwork) {
        // Qt's application object would wait at its end, perhaps for minutes, until a host name is resolved,
        // which cannot be cancelled. All windows and settings are closed, so its destructor is skipped.
        system.reset();
        static_cast<void>(std::fflush(nullptr));
        std::_Exit(ending.status);
    }
    return ending.status;
}

} // namespace tolvane::app
