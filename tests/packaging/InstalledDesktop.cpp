#include "tests/packaging/InstalledDesktop.h"

#include "tests/packaging/Help.h"
#include "tests/support/Programs.h"
#include "tests/support/SessionBus.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace tolvane::tests {

namespace {

constexpr const char* systemPython = "/usr/bin/python3";

/// The texts that a NUL follows, up to the first empty one; they are removed, and so is that one.
std::vector<std::string> takeTexts(std::string& bytes) {
    std::vector<std::string> texts;
    for (bool isLast = false; !isLast && !bytes.empty();) {
        const std::size_t end = std::min(bytes.find('\0'), bytes.size() - 1);
        isLast = end == 0;
        if (!isLast) {
            texts.push_back(bytes.substr(0, end));
        }
        bytes.erase(0, end + 1);
    }
    return texts;
}

} // namespace

std::string InstalledDesktop::missingProgram() {
    if (!std::filesystem::exists("/usr/share/mime/types")) {
        return "shared-mime-info";
    }
    for (const char* const program : {"update-desktop-database", "xdg-mime", "xdg-open", "file"}) {
        if (!isInstalled(program)) {
            return program;
        }
    }
    ProcessSetup setup;
    setup.command = {systemPython, "-c", "from gi.repository import Gio"};
    return std::filesystem::exists(systemPython) && tests::run(setup).status == 0 ? "" : "python3-gi";
}

InstalledDesktop::InstalledDesktop() {
    ProcessSetup setup;
    setup.command = {"cmake",        "--install",   programPath(".."), "--prefix",
                     prefix_.path(), "--component", "desktop"};
    const ProcessOutcome outcome = tests::run(setup);
    EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
    // Which MIME type is a special case of which.
    others_.symlink("mime", "/usr/share/mime");
    others_.folder("applications");
    home_.folder("bin");
    std::filesystem::permissions(
        home_.file(
            "bin/tolvane",
            "#!/bin/sh\nprintf '%s\\0' \"$@\" >\"$RECORD.part\"\nmv \"$RECORD.part\" \"$RECORD\"\n"),
        std::filesystem::perms::owner_all);
    updateCache();
}

void InstalledDesktop::addEntry(
    const std::string& name, const std::string& kinds, const std::string& command) {
    others_.file(
        "applications/" + name + ".desktop", "[Desktop Entry]\nType=Application\nName=" + name
                                                 + "\nExec=" + command + " %F\nMimeType=" + kinds + "\n");
    updateCache();
}

void InstalledDesktop::updateCache() const {
    for (const std::string& applications : {share() + "/applications", others_.path("applications")}) {
        EXPECT_EQ(run({"update-desktop-database", applications}).status, 0);
    }
}

ProcessOutcome InstalledDesktop::run(std::vector<std::string> command) const {
    ProcessSetup setup;
    setup.command = std::move(command);
    std::erase_if(
        setup.environment, [](const std::string& variable) { return variable.starts_with("PATH="); });
    setup.environment.insert(
        setup.environment.end(),
        {"PATH=" + home_.path("bin") + ":/usr/bin:/bin", "HOME=" + home_.path(),
         "XDG_DATA_DIRS=" + share() + ":" + others_.path(), "XDG_CONFIG_DIRS=" + home_.path("none"),
         "BROWSER=false", "WAYLAND_DISPLAY=none", "RECORD=" + home_.path("record")});
    return tests::run(setup);
}

std::vector<UsedEntry> InstalledDesktop::useMenus(const std::vector<std::string>& files) const {
    // Nothing is written beside what is installed.
    std::vector<std::string> command{systemPython, "-B", sourcePath("tests/packaging/use_menus.py"), share()};
    command.insert(command.end(), files.begin(), files.end());
    ProcessOutcome outcome = run(std::move(command));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::vector<UsedEntry> entries;
    while (!outcome.out.empty()) {
        const std::vector<std::string> texts = takeTexts(outcome.out);
        if (texts.size() < 2) {
            ADD_FAILURE() << "An entry has no file and label";
            break;
        }
        entries.push_back({texts[0], texts[1], {texts.begin() + 2, texts.end()}});
    }
    return entries;
}

bool InstalledDesktop::wasStarted() const {
    return std::filesystem::exists(home_.path("record"));
}

} // namespace tolvane::tests
