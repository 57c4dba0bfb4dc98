// Installs each component into a folder.
#include "tests/packaging/Help.h"
#include "tests/support/Programs.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace tolvane::tests {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

class InstalledFiles : public testing::Test {
protected:
    void install(const std::string& component) {
        printedBy(
            {"cmake", "--install", programPath(".."), "--prefix", prefix_.path(), "--component", component});
    }

    /// Everything installed but folders, by its path below the prefix.
    Texts files() const {
        Texts found;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(prefix_.path())) {
            if (!entry.is_directory()) {
                found.insert(entry.path().lexically_relative(prefix_.path()).string());
            }
        }
        return found;
    }

    const TemporaryFolder& prefix() const { return prefix_; }

private:
    TemporaryFolder prefix_;
};

TEST_F(InstalledFiles, ofTheTerminalProgramAreThese) {
    install("cli");
    EXPECT_EQ(
        files(), (Texts{
                     "bin/tolvane-cli", "share/bash-completion/completions/tolvane-cli",
                     "share/doc/tolvane-cli/changelog.Debian.gz", "share/doc/tolvane-cli/changelog.gz",
                     "share/doc/tolvane-cli/copyright", "share/fish/vendor_completions.d/tolvane-cli.fish",
                     "share/lintian/overrides/tolvane-cli", "share/man/man1/tolvane-cli.1.gz",
                     "share/zsh/vendor-completions/_tolvane-cli"}));
    EXPECT_THAT(printedBy({prefix().path("bin/tolvane-cli"), "report", "/"}), HasSubstr("Path: /"));
}

TEST_F(InstalledFiles, ofTheDesktopProgramStandUnderItsIdentifier) {
    install("desktop");
    const Texts found = files();
    for (const std::string file :
         {"bin/tolvane", "libexec/tolvane/tolvane-decoder", "share/man/man1/tolvane.1.gz",
          "share/applications/example.tolvane.tolvane.desktop",
          "share/caja-python/extensions/tolvane_menu.py",
          "share/file-manager/actions/example.tolvane.tolvane.facts.desktop",
          "share/kio/servicemenus/example.tolvane.tolvane.desktop",
          "share/nautilus-python/extensions/tolvane_menu.py",
          "share/nemo/actions/example.tolvane.tolvane.facts.nemo_action",
          "share/Thunar/sendto/example.tolvane.tolvane.facts.desktop",
          "share/metainfo/example.tolvane.tolvane.metainfo.xml",
          "share/icons/hicolor/scalable/apps/example.tolvane.tolvane.svg",
          "share/icons/hicolor/symbolic/apps/example.tolvane.tolvane-symbolic.svg"}) {
        EXPECT_THAT(found, Contains(file));
    }
    EXPECT_THAT(found, Not(Contains("bin/tolvane-decoder")));
    EXPECT_EQ(printedBy({prefix().path("bin/tolvane"), "--version"}).find("tolvane "), 0U);
}

TEST_F(InstalledFiles, tellTheBusWhereTheProgramIs) {
    install("desktop");
    EXPECT_EQ(
        contentsOfFile(prefix().path("share/dbus-1/services/example.tolvane.tolvane.service")),
        "[D-BUS Service]\nName=example.tolvane.tolvane\nExec=" + prefix().path("bin/tolvane")
            + " --await-bus\n");
}

TEST_F(InstalledFiles, holdPicturesOfTheSizesTheyStandFor) {
    install("desktop");
    for (const int size : {16, 32, 48, 128, 256}) {
        const std::string side = std::to_string(size);
        const std::string picture = contentsOfFile(
            prefix().path("share/icons/hicolor/" + side + "x" + side + "/apps/example.tolvane.tolvane.png"));
        ASSERT_GT(picture.size(), 24U) << size;
        const auto number = [&picture](std::size_t at) {
            int sum = 0;
            for (std::size_t i = at; i < at + 4; ++i) {
                sum = sum * 256 + static_cast<unsigned char>(picture[i]);
            }
            return sum;
        };
        // The width and height in a PNG file.
        EXPECT_EQ(number(16), size);
        EXPECT_EQ(number(20), size);
    }
}

} // namespace
} // namespace tolvane::tests
