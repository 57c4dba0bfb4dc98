// The update check over a real connection, against a server on this machine: what arrives or does not, and
// what the menu shows then. What a list may hold is UpdateCheckTest's, and the alert on a screen
// tests/desktop/UpdateTest's.
#include "app/AppDelegate.h"
#include "interface/ui_MenuBar.h"
#include "platform/linux/session/LinuxUserSession.h"
#include "platform/qt/network/QtURLSession.h"
#include "platform/qt/windows/MainWindow.h"
#include "platform/qt/windows/QtStoryboard.h"
#include "tests/platform/qt/Shell.h"
#include "tests/platform/qt/network/HttpsServer.h"
#include "tests/platform/qt/panels/DialogTest.h"
#include "tests/support/UpdateParts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
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

/// Notes that the completion of each request is over, so that a test can wait for what comes of it.
class WitnessedURLSession final : public platform::URLSession {
public:
    WitnessedURLSession(platform::MainQueue& mainQueue, platform::TransferLimits limits)
        : mainQueue_(mainQueue)
        , session_(limits) {}

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
    explicit UpdateOverNetworkTest(platform::TransferLimits limits = {}) : urlSession(mainQueue, limits) {
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

    void launch() { launchWith(server.url("/")); }
    void launchWithAnswer(const QByteArray& bytes) {
        server.answer("/", bytes);
        launch();
    }

    /// As the second window of the program shows it, too.
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
    WitnessedURLSession urlSession;
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

TEST_F(UpdateOverNetworkTest, asksForEachOfSeveralEntriesAndPassesOthersOver) {
    remembered.answer = 1;
    launchWithAnswer(listResponse(
        entry("Other", "9") + entry("Tolvane", "3", "https://tolvane.example/downloads/3?a=%20")
        + entry("Tolvane", "1.2") + "<dict><key>AppName</key><string>More</string></dict>"
        + entry("Tolvane", "4", "https://elsewhere.example/4") + entry("Tolvane", "2")));
    EXPECT_THAT(remembered.shown, SizeIs(2));
    EXPECT_THAT(workspace.opened, ElementsAre("https://tolvane.example/downloads/3?a=%20", download));
    expectCheckedMenu();
}

TEST_F(UpdateOverNetworkTest, isSilentAboutOtherStatuses) {
    for (const char* const status :
         {"404 Not Found", "500 Internal Server Error", "304 Not Modified", "400 Bad Request"}) {
        shell.settings.setDouble(0, "dateLastUpdateCheck");
        launchWithAnswer(response(
            status, "text/xml",
            QByteArray(status).startsWith("304") ? QByteArray() : listOf(entry("Tolvane", "2"))));
        expectSilence();
    }
}

TEST_F(UpdateOverNetworkTest, isSilentAboutOtherKindsOfBodies) {
    for (const char* const type : {"application/xml", "TEXT/XML", "text/html", "Text/Plain", ""}) {
        shell.settings.setDouble(0, "dateLastUpdateCheck");
        launchWithAnswer(response("200 OK", type, listOf(entry("Tolvane", "2"))));
        expectSilence();
    }
}

TEST_F(UpdateOverNetworkTest, takesPlainTextAndAnyCharset) {
    for (const char* const type : {"text/plain", "text/xml; charset=utf-8", "text/plain;charset=US-ASCII"}) {
        remembered.shown.clear();
        shell.settings.setDouble(0, "dateLastUpdateCheck");
        launchWithAnswer(response("200 OK", type, listOf(entry("Tolvane", "2"))));
        EXPECT_THAT(remembered.shown, SizeIs(1)) << type;
    }
}

TEST_F(UpdateOverNetworkTest, reportsAMalformedOrEmptyBody) {
    for (const char* const body : {"<html>Welcome to the hotel</html>", ""}) {
        remembered.shown.clear();
        shell.settings.setDouble(0, "dateLastUpdateCheck");
        launchWithAnswer(response("200 OK", "text/plain", body));
        expectError("Error in update Property List.");
    }
}

TEST_F(UpdateOverNetworkTest, isSilentAboutAnEndlessBody) {
    server.answerBy("/", [](QSslSocket& client) {
        client.write("HTTP/1.1 200 OK\r\nContent-Type: text/xml\r\n\r\n");
        const auto goOn = [&client] {
            if (client.encryptedBytesToWrite() < 100'000) {
                client.write(QByteArray(64 * 1024, ' '));
            }
        };
        QObject::connect(&client, &QSslSocket::encryptedBytesWritten, &client, goOn);
        goOn();
    });
    launch();
    expectSilence();
}

TEST_F(UpdateOverNetworkTest, isSilentAboutACutOffBody) {
    launchWithAnswer(listResponse(entry("Tolvane", "2")).chopped(1));
    expectSilence();
}

TEST_F(UpdateOverNetworkTest, readsASlowBody) {
    const QByteArray whole = listResponse(entry("Tolvane", "2"));
    server.answerBy("/", [whole](QSslSocket& client) {
        client.write(whole.left(100));
        QTimer::singleShot(300, &client, [&client, whole] {
            client.write(whole.mid(100));
            client.disconnectFromHost();
        });
    });
    launch();
    EXPECT_THAT(remembered.shown, SizeIs(1));
}

class ImpatientUpdateTest : public UpdateOverNetworkTest {
protected:
    ImpatientUpdateTest() : UpdateOverNetworkTest({.silence = std::chrono::milliseconds(500)}) {}
};

TEST_F(ImpatientUpdateTest, isSilentAboutAServerThatNeverEnds) {
    server.answerBy("/", [](QSslSocket& client) { client.write("HTTP/1.1 200 OK\r\n"); });
    launch();
    expectSilence();
}

TEST_F(UpdateOverNetworkTest, isSilentAboutABadCertificate) {
    TestAuthority stranger;
    HttpsServer other(stranger.issueFor("IP:127.0.0.1"));
    other.answer("/", listResponse(entry("Tolvane", "2")));
    launchWith(other.url("/"));
    expectSilence();
    EXPECT_THAT(other.requests(), IsEmpty());
}

TEST_F(UpdateOverNetworkTest, isSilentAboutARedirectionToPlainHTTP) {
    launchWithAnswer("HTTP/1.1 301 Moved\r\nLocation: http://127.0.0.1:1/\r\nContent-Length: 0\r\n\r\n");
    expectSilence();
}

TEST_F(UpdateOverNetworkTest, isSilentWithoutANetwork) {
    server.stop();
    launch();
    expectSilence();
}

TEST_F(UpdateOverNetworkTest, asksNobodyWhenSwitchedOff) {
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
