#include "tests/packaging/InstalledDesktop.h"

#include "tests/packaging/Help.h"
#include "tests/support/Programs.h"

#include <filesystem>
#include <sstream>
#include <utility>

namespace tolvane::tests {

namespace {

constexpr const char* systemPython = "/usr/bin/python3";

/// A program that is needed but missing; empty if there is none.
std::string missingProgram() {
    if (!std::filesystem::exists("/usr/share/mime/types")) {
        return "shared-mime-info";
    }
    for (const char* const program : {"update-desktop-database", "xdg-mime", "xdg-open", "file"}) {
        if (!isInstalled(program)) {
            return program;
        }
    }
    return run({.command = {systemPython, "-c", "from gi.repository import Gio"}}).status == 0 ? ""
                                                                                               : "python3-gi";
}

} // namespace

void InstalledDesktop::SetUp() {
    if (const std::string missing = missingProgram(); !missing.empty()) {
        GTEST_SKIP() << missing << " is not installed";
    }
    printedBy(
        {"cmake", "--install", programPath(".."), "--prefix", prefix_.path(), "--component", "desktop"});
    // Which MIME type is a special case of which.
    others_.symlink("mime", "/usr/share/mime");
    others_.folder("applications");
    home.folder("bin");
    std::filesystem::permissions(
        home.file(
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
        EXPECT_EQ(runHere({"update-desktop-database", applications}).status, 0);
    }
}

ProcessOutcome InstalledDesktop::runHere(std::vector<std::string> command) const {
    ProcessSetup setup{.command = std::move(command)};
    std::erase_if(
        setup.environment, [](const std::string& variable) { return variable.starts_with("PATH="); });
    setup.environment.insert(
        setup.environment.end(),
        {"PATH=" + home.path("bin") + ":/usr/bin:/bin", "HOME=" + home.path(),
         "XDG_DATA_DIRS=" + share() + ":" + others_.path(), "XDG_CONFIG_DIRS=" + home.path("none"),
         "BROWSER=false", "WAYLAND_DISPLAY=none", "RECORD=" + home.path("record")});
    return run(setup);
}

std::vector<UsedEntry> InstalledDesktop::useMenus(const std::vector<std::string>& files) const {
    // Nothing is written beside what is installed.
    std::vector<std::string> command{systemPython, "-B", sourcePath("tests/packaging/use_menus.py"), share()};
    command.insert(command.end(), files.begin(), files.end());
    const ProcessOutcome outcome = runHere(std::move(command));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::vector<UsedEntry> entries;
    std::istringstream texts(outcome.out);
    for (UsedEntry entry; std::getline(texts, entry.file, '\0') && std::getline(texts, entry.label, '\0');) {
        entry.arguments.clear();
        for (std::string text; std::getline(texts, text, '\0') && !text.empty();) {
            entry.arguments.push_back(text);
        }
        entries.push_back(entry);
    }
    return entries;
}

} // namespace tolvane::tests
