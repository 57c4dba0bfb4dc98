// The user's session and the terminal program on a Mac.
#include "platform/macos/session/MacUserSession.h"
#include "tests/platform/macos/real/RealMac.h"

#include <gtest/gtest.h>

#include <string>

namespace tolvane::tests::macos {

using RealSession = RealMac;

TEST_F(RealSession, theVersionIsThatOfTheSystem) {
    const auto version = platform::MacProcessInfo().operatingSystemVersion();
    std::string text = std::to_string(version.majorVersion) + "." + std::to_string(version.minorVersion);
    if (version.patchVersion != 0) {
        text += "." + std::to_string(version.patchVersion);
    }
    EXPECT_EQ(text, said({"/usr/bin/sw_vers", "-productVersion"}));
}

TEST_F(RealSession, theHomeFolderIsTheShells) {
    EXPECT_EQ(system.session->homeDirectory().path(), said({"/bin/sh", "-c", "cd && pwd"}));
}

TEST_F(RealSession, theTerminalProgramReportsAFile) {
    const std::string file = folder.file("a.txt", "hello, world");
    const std::string report = said({TOLVANE_PROGRAMS_DIR "/tolvane-cli", "report", "--json", file});
    EXPECT_TRUE(report.contains("public.plain-text")) << report;
    EXPECT_TRUE(report.contains(std::to_string(statSays(file, "%i")))) << report;
    const std::string text = said({TOLVANE_PROGRAMS_DIR "/tolvane-cli", "report", file});
    EXPECT_TRUE(text.contains(real + "/a.txt")) << text;
}

} // namespace tolvane::tests::macos
