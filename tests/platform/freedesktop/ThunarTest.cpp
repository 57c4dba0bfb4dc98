// Revealing with a real file manager, on a virtual screen.
#include "platform/freedesktop/FileManagerReveal.h"
#include "tests/platform/freedesktop/BusTest.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

using tests::Process;
using tests::ProcessSetup;
using tests::TemporaryFolder;

/// An X server without a screen, and an environment that shows windows there, with a home folder of its own.
class Desktop {
public:
    Desktop() {
        ProcessSetup setup;
        // Otherwise a server starts over when its last client leaves, and refuses connections meanwhile.
        setup.command = {"Xvfb",       "-displayfd", "1",   "-screen", "0",
                         "800x600x24", "-nolisten",  "tcp", "-noreset"};
        server_ = std::make_unique<Process>(setup);
        EXPECT_TRUE(server_->waitForOutput([this](const std::string& out) {
            display_ = ":" + out.substr(0, out.find('\n'));
            return out.contains('\n');
        })) << "The X server does not start";
        std::filesystem::permissions(home_.folder("runtime"), std::filesystem::perms::owner_all);
    }

    std::vector<std::string> environment() const {
        auto variables = tests::plainEnvironment();
        variables.insert(
            variables.end(),
            {"DISPLAY=" + display_, "HOME=" + home_.path(), "GDK_BACKEND=x11",
             "XDG_RUNTIME_DIR=" + home_.path("runtime"), "XDG_CONFIG_HOME=" + home_.path("config"),
             "XDG_CACHE_HOME=" + home_.path("cache"), "XDG_DATA_HOME=" + home_.path("data"), "NO_AT_BRIDGE=1",
             "GSETTINGS_BACKEND=memory"});
        return variables;
    }

    /// Whether there is a window to be seen with this in its title.
    bool shows(const std::string& title) const {
        ProcessSetup setup;
        setup.command = {"xdotool", "search", "--onlyvisible", "--name", title};
        setup.environment = environment();
        return tests::run(setup).status == 0;
    }

private:
    TemporaryFolder home_;
    std::unique_ptr<Process> server_;
    std::string display_;
};

using ThunarTest = tests::BusTest;

TEST_F(ThunarTest, showsTheFolderOfARevealedFile) {
    for (const char* const program : {"thunar", "Xvfb", "xdotool"}) {
        if (!tests::isInstalled(program)) {
            GTEST_SKIP() << program << " is not installed";
        }
    }
    const TemporaryFolder folder;
    folder.folder("tolvane revealed");
    const std::string path = folder.file("tolvane revealed/a b");
    const Desktop desktop;
    setBus(
        {.services = {{"org.freedesktop.FileManager1", "/usr/bin/thunar --gapplication-service"}},
         .environment = desktop.environment()});
    EXPECT_FALSE(desktop.shows("tolvane revealed"));

    FileManagerReveal fileManager(connect());
    EXPECT_TRUE(fileManager.reveal(path));
    waitUntil([&] { return desktop.shows("tolvane revealed"); });
    // Before its screen goes.
    bus().end();
}

} // namespace
} // namespace tolvane::platform
