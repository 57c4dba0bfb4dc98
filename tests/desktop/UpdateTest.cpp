// The update check of the whole program, from its start to the browser.
#include "tests/desktop/DesktopTest.h"
#include "tests/support/TestAuthority.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::HasSubstr;

std::string listOf(const std::string& entries) {
    return "<plist version=\"1.0\"><array>" + entries + "</array></plist>\n";
}

std::string entry(const std::string& version) {
    return "<dict><key>AppName</key><string>Tolvane</string><key>Version</key><string>" + version
           + "</string><key>URL</key><string>https://tolvane.example/downloads/a%20b?c=d</string></dict>";
}

class Update : public DesktopTest {
protected:
    void SetUp() override {
        if (!isInstalled("openssl")) {
            GTEST_SKIP() << "openssl is not installed";
        }
        DesktopTest::SetUp();
        if (!IsSkipped()) {
            // As at the very first start.
            std::filesystem::remove(settingsFile());
        }
    }

    /// Starts a server of this list.
    void serve(const std::string& list) {
        file(
            "list", "HTTP/1.1 200 OK\r\nContent-Type: text/xml\r\nContent-Length: "
                        + std::to_string(list.size()) + "\r\nConnection: close\r\n\r\n" + list);
        startServer({"-HTTP"});
    }

    /// Starts a server that agrees on encryption and then sends nothing.
    void serveNothing() { startServer({}); }

    Process& startTolvaneOn(std::vector<std::string> arguments, std::vector<std::string> variables = {}) {
        if (authority_) {
            variables.push_back("TOLVANE_TEST_AUTHORITY=" + authority_->own().certificate);
            variables.push_back("TOLVANE_TEST_UPDATE_LIST=https://127.0.0.1:" + port_ + "/list");
        }
        variables.push_back(opener.pathVariable());
        arguments.insert(arguments.begin(), programPath("tolvane-with-test-addresses"));
        return desktop().start(std::move(arguments), {}, variables);
    }

    std::string settingsFile() { return desktop().home().path("config/tolvane/tolvane.conf"); }
    std::string settings() {
        return std::filesystem::exists(settingsFile()) ? contentsOfFile(settingsFile()) : std::string();
    }

    /// The line of the settings that holds the time of the last check.
    std::string timeOfLastCheck() {
        const std::string all = settings();
        const auto start = all.find("dateLastUpdateCheck=");
        return start == std::string::npos ? std::string() : all.substr(start, all.find('\n', start) - start);
    }

    const Opener opener;

private:
    void startServer(const std::vector<std::string>& more) {
        authority_.emplace();
        const Certificate certificate = authority_->issueFor("IP:127.0.0.1");
        std::vector<std::string> command{"openssl", "s_server"};
        command.insert(command.end(), more.begin(), more.end());
        command.insert(
            command.end(),
            {"-accept", "127.0.0.1:0", "-cert", certificate.certificate, "-key", certificate.key});
        Process& server = desktop().start(std::move(command), desktop().files().path());
        const std::string announcement = "ACCEPT 127.0.0.1:";
        EXPECT_TRUE(server.waitForOutput([&](const std::string& out) {
            const auto start = out.find(announcement);
            const auto end = start == std::string::npos ? start : out.find('\n', start);
            if (end == std::string::npos) {
                return false;
            }
            port_ = out.substr(start + announcement.size(), end - start - announcement.size());
            return true;
        })) << "The server does not start";
    }

    std::optional<TestAuthority> authority_;
    std::string port_;
};

TEST_F(Update, isOfferedAtTheFirstStartAndDownloadedByTheBrowser) {
    serve(listOf(entry("99")));
    Process& tolvane = startTolvaneOn({file("first")});
    const std::string window = desktop().waitForWindow(titleOf("first"));
    const std::string alert = desktop().waitForWindow(alertTitle);
    EXPECT_THAT(settings(), HasSubstr("noUpdateCheck=false\n"));
    EXPECT_THAT(settings(), HasSubstr("updateCheckInt=43200\n"));
    EXPECT_THAT(settings(), HasSubstr("dateLastUpdateCheck="));
    desktop().press(alert, {"Tab", "space"});
    desktop().waitUntilGone(alertTitle);
    EXPECT_TRUE(waitUntil([this] {
        return opener.calls() == "1\nhttps://tolvane.example/downloads/a%20b?c=d\n";
    })) << opener.calls();
    quit(window, tolvane);
}

TEST_F(Update, isIgnoredOnReturnAndOnEscapeAndNotLookedForAgainSoon) {
    serve(listOf(entry("98") + entry("99")));
    Process& tolvane = startTolvaneOn({file("first")});
    const std::string window = desktop().waitForWindow(titleOf("first"));
    answerAlerts({"Return", "Escape"});
    quit(window, tolvane);
    EXPECT_EQ(opener.calls(), "");
    const std::string time = timeOfLastCheck();
    EXPECT_NE(time, "");
    Process& again = startTolvaneOn({file("first")});
    quit(desktop().waitForWindow(titleOf("first")), again);
    EXPECT_EQ(timeOfLastCheck(), time);
}

TEST_F(Update, listThatStopsTheProgramStopsItOnce) {
    serve(listOf("<string>no entry</string>"));
    Process& tolvane = startTolvaneOn({file("first")});
    const auto outcome = desktop().endOf(tolvane);
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->signal, SIGABRT);
    EXPECT_THAT(outcome->err, HasSubstr("tolvane: fatal: an entry of the update list is not a dictionary\n"));
    EXPECT_THAT(settings(), HasSubstr("dateLastUpdateCheck="));
    EXPECT_THAT(settings(), HasSubstr("updateCheckInt=43200\n"));
    Process& again = startTolvaneOn({file("second")});
    quit(desktop().waitForWindow(titleOf("second")), again);
}

TEST_F(Update, doesNotKeepTheProgramFromEnding) {
    serveNothing();
    Process& tolvane = startTolvaneOn({file("first")});
    quit(desktop().waitForWindow(titleOf("first")), tolvane);
    EXPECT_THAT(settings(), HasSubstr("dateLastUpdateCheck="));
}

TEST_F(Update, doesNotKeepTheProgramFromEndingWhenNoNameIsFound) {
    Process& tolvane = startTolvaneOn(
        {file("first")},
        {"TOLVANE_TEST_NAMES_ARE_NEVER_FOUND=yes", "TOLVANE_TEST_UPDATE_LIST=https://tolvane.example/list"});
    quit(desktop().waitForWindow(titleOf("first")), tolvane);
    EXPECT_NE(timeOfLastCheck(), "");
}

TEST_F(Update, isOfferedByAStartThatEndsByItself) {
    serve(listOf(entry("99")));
    Process& tolvane = startTolvaneOn({"--services", "/one"});
    // The alert of the file, then that of the update.
    answerAlerts({"Return", "Return"});
    expectGoodEnd(tolvane);
}

TEST_F(Update, isWaitedForWithoutAWord) {
    serve(listOf("<dict><key>AppName</key><string>Another</string></dict>"));
    Process& tolvane = startTolvaneOn({"--services", "/one"});
    answerAlerts({"Return"});
    expectGoodEnd(tolvane);
    EXPECT_TRUE(desktop().windows().empty());
}

} // namespace
} // namespace tolvane::tests
