// What desktops open files with once the package is installed: never this program, unless its user chose so.
#include "tests/packaging/Help.h"
#include "tests/packaging/InstalledDesktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {

namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

const std::vector<std::string> kinds{
    // Documents, archives, programs and their sources.
    "application/gzip", "application/java-archive", "application/javascript", "application/json",
    "application/msword", "application/octet-stream", "application/ogg", "application/pdf",
    "application/postscript", "application/rtf", "application/toml", "application/vnd.debian.binary-package",
    "application/vnd.oasis.opendocument.text",
    "application/vnd.openxmlformats-officedocument.wordprocessingml.document", "application/vnd.rar",
    "application/vnd.sqlite3", "application/x-7z-compressed", "application/x-apple-diskimage",
    "application/x-awk", "application/x-cd-image", "application/x-compressed-tar", "application/x-core",
    "application/x-desktop", "application/x-executable", "application/x-ms-dos-executable",
    "application/x-object", "application/x-perl", "application/x-php", "application/x-ruby",
    "application/x-sharedlib", "application/x-shellscript", "application/x-tar", "application/x-zerosize",
    "application/xhtml+xml", "application/xml", "application/zip", "text/html", "text/javascript",
    "text/markdown", "text/plain", "text/x-c++src", "text/x-lua", "text/x-python", "text/x-python3",
    // Media.
    "audio/flac", "audio/mpeg", "audio/x-wav", "font/otf", "font/ttf", "image/gif", "image/heif",
    "image/jpeg", "image/png", "image/svg+xml", "image/tiff", "image/vnd.adobe.photoshop", "image/webp",
    "image/x-canon-cr2", "image/x-dcraw", "image/x-nikon-nef", "video/mp4", "video/webm", "video/x-matroska",
    // What is no file, and addresses.
    "inode/blockdevice", "inode/chardevice", "inode/directory", "inode/fifo", "inode/mount-point",
    "inode/socket", "inode/symlink", "x-scheme-handler/file", "x-scheme-handler/https"};

class Defaults : public InstalledDesktop {
protected:
    /// A line about GIO's programs for each of these types, and one about all programs.
    std::vector<std::string> toldByGio(const std::vector<std::string>& types) {
        std::vector<std::string> command{"/usr/bin/python3", sourcePath("tests/packaging/ask_gio.py")};
        command.insert(command.end(), types.begin(), types.end());
        const ProcessOutcome outcome = runHere(std::move(command));
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return linesOf(outcome.out);
    }

    std::string defaultOfGio(const std::string& type) {
        const std::string line = toldByGio({type}).at(0);
        EXPECT_TRUE(line.starts_with(type + "\t")) << line;
        const std::size_t begin = type.size() + 1;
        return line.substr(begin, line.find('\t', begin) - begin);
    }

    std::string defaultOfXdg(const std::string& type) {
        return runHere({"xdg-mime", "query", "default", type}).out;
    }

    /// An editor, a viewer, an archiver, a player, a file manager and a browser.
    void installOthers() {
        addEntry("editor", "text/plain;");
        addEntry("viewer", "application/pdf;image/jpeg;image/png;image/tiff;");
        addEntry("archiver", "application/x-compressed-tar;application/x-tar;application/zip;");
        addEntry("player", "audio/flac;audio/mpeg;video/mp4;video/x-matroska;");
        addEntry("files", "inode/directory;");
        addEntry("browser", "text/html;x-scheme-handler/https;");
    }

    /// Expects that none of the types is opened by the program, nor offered to it; returns what GIO told.
    std::vector<std::string> expectNeverOurs() {
        std::vector<std::string> told = toldByGio(kinds);
        EXPECT_EQ(told.size(), kinds.size() + 1);
        if (!told.empty()) {
            told.pop_back();
        }
        EXPECT_THAT(told, Not(Contains(HasSubstr("tolvane"))));
        for (const std::string& kind : kinds) {
            EXPECT_THAT(defaultOfXdg(kind), Not(HasSubstr("tolvane"))) << kind;
        }
        return told;
    }

    /// Expects the same before and after every menu entry was used.
    void expectNeverOursWhateverIsUsed() {
        const std::vector<std::string> before = expectNeverOurs();
        home.folder("a folder");
        home.file("a.py");
        const std::vector<std::string> files{home.path("a folder"), home.path("a.py")};
        EXPECT_FALSE(useMenus(files).empty());
        EXPECT_EQ(expectNeverOurs(), before);
    }
};

TEST_F(Defaults, areTheOtherPrograms) {
    installOthers();
    expectNeverOursWhateverIsUsed();
    EXPECT_EQ(defaultOfGio("inode/directory"), "files.desktop");
    EXPECT_EQ(defaultOfGio("application/pdf"), "viewer.desktop");
    EXPECT_EQ(defaultOfGio("video/mp4"), "player.desktop");
    // Somebody opens all texts.
    for (const char* const source : {"text/x-python", "application/x-shellscript", "text/x-lua"}) {
        EXPECT_EQ(defaultOfGio(source), "editor.desktop") << source;
    }
    EXPECT_EQ(defaultOfXdg("application/zip"), "archiver.desktop\n");
}

TEST_F(Defaults, areNoneWithoutOtherPrograms) {
    expectNeverOursWhateverIsUsed();
    EXPECT_EQ(defaultOfGio("inode/directory"), "");
    EXPECT_EQ(defaultOfGio("application/octet-stream"), "");
}

TEST_F(Defaults, wouldBeTheProgramIfAnEntryListedTypes) {
    installOthers();
    addEntry("a-tolvane", "text/plain;application/octet-stream;", "tolvane");
    EXPECT_EQ(defaultOfGio("text/x-python"), "a-tolvane.desktop");
    EXPECT_EQ(defaultOfGio("application/x-shellscript"), "a-tolvane.desktop");
    EXPECT_EQ(defaultOfXdg("application/octet-stream"), "a-tolvane.desktop\n");
}

TEST_F(Defaults, leaveTheProgramOnceInTheListOfAllApplications) {
    installOthers();
    std::string all = toldByGio({}).at(0);
    const std::string ours = "example.tolvane.tolvane.desktop";
    const std::size_t at = all.find(ours);
    ASSERT_NE(at, std::string::npos) << all;
    all.erase(at, ours.size());
    EXPECT_THAT(all, Not(HasSubstr("tolvane")));
}

// Revealing a file ends with xdg-open for its folder if no file manager answers.
TEST_F(Defaults, leaveAFolderUnopenedWithoutAFileManager) {
    const std::string folder = home.folder("a folder");
    EXPECT_NE(runHere({"xdg-open", "file://" + home.path("a%20folder")}).status, 0);
    EXPECT_FALSE(std::filesystem::exists(home.path("record")));

    addEntry("a-tolvane", "inode/directory;", "tolvane");
    EXPECT_EQ(runHere({"xdg-open", "file://" + home.path("a%20folder")}).status, 0);
    EXPECT_EQ(contentsOfFile(home.path("record")), folder + '\0');
}

} // namespace

} // namespace tolvane::tests
