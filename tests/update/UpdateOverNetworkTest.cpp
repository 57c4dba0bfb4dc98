// The update check over a real connection to a server on this machine. UpdateCheckTest has the lists'
// contents, QtURLSessionTest the failures of a connection, tests/desktop/UpdateTest the alert on a screen.
#include "app/AppDelegate.h"
#include "interface/ui_MenuBar.h"
#include "platform/linux/session/LinuxUserSession.h"
#include "platform/qt/network/QtMainQueue.h"
#include "platform/qt/network/QtURLSession.h"
#include "platform/qt/windows/MainWindow.h"
#include "platform/qt/windows/QtStoryboard.h"
#include "tests/platform/qt/Shell.h"
#include "tests/platform/qt/network/HttpsServer.h"
#include "tests/platform/qt/panels/DialogTest.h"
#include "tests/support/UpdateParts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr auto prefix = "https://tolvane.example/downloads/";
constexpr auto download = "https://tolvane.example/downloads/tolvane.tar.xz";

QByteArray entry(const std::string& name, const std::string& version, const std::string& url = download) {
    return QByteArray::fromStdString(
        "<dict><key>AppName</key><string>" + name + "</string><key>Version</key><string>" + version
        + "</string><key>URL</key><string>" + url + "</string></dict>\n");
}

QByteArray listOf(const QByteArray& entries) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Example//DTD PLIST 1.0//EN" "http://example.com/list.dtd">
<plist version="1.0"><array>
)" + entries
           + "</array></plist>\n";
}

QByteArray listResponse(const QByteArray& entries) {
    return response("200 OK", "text/xml", listOf(entries));
}

/// Counts the requests whose completion handlers have run, so that a test can wait for them.
class WitnessedURLSession final : public platform::URLSession {
public:
    explicit WitnessedURLSession(platform::MainQueue& mainQueue) : mainQueue_(mainQueue) {}

    std::shared_ptr<platform::URLSessionDataTask> dataTaskWithURL(
        const platform::URL& url, platform::DataTaskCompletionHandler completionHandler) override {
        return session_.dataTaskWithURL(
            url, [this, handler = std::move(completionHandler)](auto data, auto response, auto error) {
                handler(std::move(data), std::move(response), std::move(error));
                mainQueue_.async([this] { ++over; });
            });
    }

    int over = 0;

private:
    platform::MainQueue& mainQueue_;
    platform::QtURLSession session_;
};

class UpdateOverNetworkTest : public DialogTest {
protected:
    UpdateOverNetworkTest() {
        trustAlone(authority);
        Ui::MenuBar().setupUi(&window);
        window.formIsComplete();
        window.show();
    }

    std::shared_ptr<app::AppDelegate> delegateFor(const std::string& url) {
        app::ProductAddresses addresses;
        addresses.updateList = url;
        addresses.downloadPrefix = prefix;
        return app::AppDelegate::make(
            {bundle, shell.application, remembered, workspace, system, shell.settings, session, urlSession,
             mainQueue, addresses});
    }

    /// Launches with the list at this address, and waits until the check is over.
    void launchWith(const std::string& url) {
        delegate = delegateFor(url);
        const int before = urlSession.over;
        delegate->applicationDidFinishLaunching();
        settings = contentsOfFile(shell.folder.path("settings.conf"));
        EXPECT_TRUE(eventually([&] { return urlSession.over > before; })) << url;
        // At most once in the interval.
        delegate->applicationDidFinishLaunching();
        EXPECT_EQ(contentsOfFile(shell.folder.path("settings.conf")), settings);
    }

    /// Launches anew, as if there had been no check, with this answer.
    void launchAnewWithAnswer(const QByteArray& bytes) {
        remembered.shown.clear();
        shell.settings.setDouble(0, "dateLastUpdateCheck");
        launchWithAnswer(bytes);
    }

    void launch() { launchWith(server.url("/")); }
    void launchWithAnswer(const QByteArray& bytes) {
        server.answer("/", bytes);
        launch();
    }

    /// In a window that is opened later, too.
    void expectMenu(const char* title, bool isChecked) {
        platform::MainWindow later(shell.application, "Later");
        Ui::MenuBar().setupUi(&later);
        later.formIsComplete();
        for (const QMainWindow* const shown :
             {static_cast<QMainWindow*>(&window), static_cast<QMainWindow*>(&later)}) {
            const auto* const item = shown->findChild<QAction*>("actionUpdateChecked");
            EXPECT_EQ(item->text(), title);
            EXPECT_EQ(item->isChecked(), isChecked);
        }
    }
    void expectCheckedMenu() { expectMenu("Checked for update", true); }
    void expectUncheckedMenu() { expectMenu("Update not checked", false); }

    void expectSettings() const {
        EXPECT_THAT(settings, testing::HasSubstr("updateCheckInt=43200\n"));
        EXPECT_THAT(settings, testing::HasSubstr("noUpdateCheck=false\n"));
        EXPECT_GT(shell.settings.doubleForKey("dateLastUpdateCheck"), 7e8);
    }

    void expectSilence() {
        EXPECT_THAT(remembered.shown, IsEmpty());
        EXPECT_THAT(workspace.opened, IsEmpty());
        expectUncheckedMenu();
        expectSettings();
    }

    void expectError(const std::string& text) {
        ASSERT_THAT(remembered.shown, SizeIs(1));
        EXPECT_EQ(remembered.shown[0].messageText, "An error occurred:");
        EXPECT_EQ(remembered.shown[0].informativeText, text);
        expectUncheckedMenu();
        expectSettings();
    }

    TestAuthority authority;
    HttpsServer server{authority.issueFor("IP:127.0.0.1,DNS:localhost")};
    Shell shell;
    platform::MainWindow window{shell.application, "Test"};
    platform::QtBundle bundle{shell.application, "1.2"};
    RememberedAlerts remembered;
    RememberedWorkspace workspace;
    GivenVersion system;
    platform::LinuxUserSession session;
    platform::QtMainQueue mainQueue;
    WitnessedURLSession urlSession{mainQueue};
    std::shared_ptr<app::AppDelegate> delegate;
    std::string settings;
};

TEST_F(UpdateOverNetworkTest, marksTheMenuForTheRunningVersion) {
    launchWithAnswer(listResponse(entry("Tolvane", "1.2")));
    EXPECT_THAT(remembered.shown, IsEmpty());
    expectCheckedMenu();
    expectSettings();
    EXPECT_THAT(server.requests(), SizeIs(1));
}

TEST_F(UpdateOverNetworkTest, asksAboutEachOfSeveralEntriesAndSkipsOthers) {
    remembered.answer = 1;
    launchWithAnswer(listResponse(
        entry("Other", "9") + entry("Tolvane", "3", "https://tolvane.example/downloads/3?a=%20")
        + entry("Tolvane", "1.2") + "<dict><key>AppName</key><string>More</string></dict>"
        + entry("Tolvane", "4", "https://elsewhere.example/4") + entry("Tolvane", "2")));
    EXPECT_THAT(remembered.shown, SizeIs(2));
    EXPECT_THAT(
        workspace.opened, testing::ElementsAre("https://tolvane.example/downloads/3?a=%20", download));
    expectCheckedMenu();
}

TEST_F(UpdateOverNetworkTest, isSilentAboutOtherStatusesAndTypes) {
    const QByteArray list = listOf(entry("Tolvane", "2"));
    for (const auto& [status, type, body] : std::vector<std::tuple<const char*, const char*, QByteArray>>{
             {"404 Not Found", "text/xml", list},
             {"500 Internal Server Error", "text/xml", list},
             {"304 Not Modified", "text/xml", ""},
             {"400 Bad Request", "text/xml", list},
             {"200 OK", "application/xml", list},
             {"200 OK", "TEXT/XML", list},
             {"200 OK", "text/html", list},
             {"200 OK", "Text/Plain", list},
             {"200 OK", "", list}}) {
        SCOPED_TRACE(std::string(status) + ", " + type);
        launchAnewWithAnswer(response(status, type, body));
        expectSilence();
    }
}

TEST_F(UpdateOverNetworkTest, acceptsPlainTextAndAnyCharset) {
    for (const char* const type : {"text/plain", "text/xml; charset=utf-8", "text/plain;charset=US-ASCII"}) {
        launchAnewWithAnswer(response("200 OK", type, listOf(entry("Tolvane", "2"))));
        EXPECT_THAT(remembered.shown, SizeIs(1)) << type;
    }
}

TEST_F(UpdateOverNetworkTest, reportsAMalformedOrEmptyBody) {
    for (const char* const body : {"<html>Welcome to the hotel</html>", ""}) {
        launchAnewWithAnswer(response("200 OK", "text/plain", body));
        expectError("Error in update Property List.");
    }
}

TEST_F(UpdateOverNetworkTest, isSilentAboutABadCertificate) {
    TestAuthority stranger;
    HttpsServer other(stranger.issueFor("IP:127.0.0.1"));
    other.answer("/", listResponse(entry("Tolvane", "2")));
    launchWith(other.url("/"));
    expectSilence();
    EXPECT_THAT(other.requests(), IsEmpty());
}

TEST_F(UpdateOverNetworkTest, isSilentWithoutANetwork) {
    server.stop();
    launch();
    expectSilence();
}

TEST_F(UpdateOverNetworkTest, sendsNoRequestWhenSwitchedOff) {
    shell.settings.setBool(true, "noUpdateCheck");
    delegate = delegateFor(server.url("/"));
    delegate->applicationDidFinishLaunching();
    settle();
    EXPECT_THAT(server.requests(), IsEmpty());
    EXPECT_EQ(
        contentsOfFile(shell.folder.path("settings.conf")),
        "[General]\nnoUpdateCheck=true\nupdateCheckInt=43200\n");
}

} // namespace
} // namespace tolvane::tests
