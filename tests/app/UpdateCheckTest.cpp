#include "app/UpdateCheck.h"

#include "tests/support/MemoryStoryboard.h"
#include "tests/support/PropertyListWriters.h"
#include "tests/support/UpdateParts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace tolvane::app {
namespace {

using platform::Array;
using platform::Dictionary;
using platform::MenuItemState;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr auto endpoint = "https://tolvane.example/updates/versions.plist";
constexpr auto download = "https://tolvane.example/downloads/tolvane-2.tar.xz";

Dictionary entry(std::string version, std::string url = download) {
    return {{"AppName", "Tolvane"}, {"Version", std::move(version)}, {"URL", std::move(url)}};
}

platform::Data bodyOf(const platform::Value& list) {
    return tests::bytesOf(*tests::binaryPropertyList(list));
}

ProductAddresses addressesOf(const std::string& updateList) {
    ProductAddresses addresses;
    addresses.updateList = updateList;
    addresses.downloadPrefix = "https://tolvane.example/downloads/";
    return addresses;
}

class UpdateCheckTest : public testing::Test {
protected:
    UpdateCheckTest() {
        bundle.setInfoDictionary({{"CFBundleShortVersionString", "1.2"}});
        session.time = 1e9;
    }

    void schedule() {
        log.clear();
        check->schedule();
    }

    /// Reads the list that these entries make as the running version 1.2 does.
    void process(Array entries) { check->processList(bodyOf(std::move(entries)), "1.2"); }

    /// Completes the request of the check that was started last, and runs what that has queued.
    void complete(
        std::optional<platform::URLResponse> response,
        std::optional<platform::Data> data = bodyOf(Array{entry("2")}),
        std::optional<platform::Error> error = std::nullopt) {
        ASSERT_THAT(urlSession.resumed, testing::Not(IsEmpty()));
        urlSession.resumed.back()(std::move(data), std::move(response), std::move(error));
        queue.doAll();
    }

    double lastCheck() const { return defaults.kept.doubleForKey("dateLastUpdateCheck"); }
    double storedInterval() const { return defaults.kept.doubleForKey("updateCheckInt"); }

    /// The versions of which alerts say that they are available.
    std::vector<std::string> offeredVersions() const {
        std::vector<std::string> versions;
        for (const platform::Alert& alert : alerts.shown) {
            const std::string before = "An update to this app to version ";
            const std::string after = " is available.";
            EXPECT_TRUE(alert.messageText.starts_with(before) && alert.messageText.ends_with(after));
            versions.push_back(alert.messageText.substr(
                before.size(), alert.messageText.size() - before.size() - after.size()));
        }
        return versions;
    }

    void expectSilence() const {
        EXPECT_THAT(alerts.shown, IsEmpty());
        EXPECT_THAT(workspace.opened, IsEmpty());
        expectUncheckedMenu();
    }

    void expectUncheckedMenu() const {
        EXPECT_EQ(application.item->title(), "Update not checked");
        EXPECT_EQ(application.item->state(), MenuItemState::off);
    }

    void expectCheckedMenu() const {
        EXPECT_EQ(application.item->title(), "Checked for update");
        EXPECT_EQ(application.item->state(), MenuItemState::on);
    }

    void expectError(const std::string& text) const {
        ASSERT_THAT(alerts.shown, SizeIs(1));
        EXPECT_EQ(alerts.shown[0].messageText, "An error occurred:");
        EXPECT_EQ(alerts.shown[0].informativeText, text);
        EXPECT_EQ(alerts.shown[0].style, platform::AlertStyle::critical);
        EXPECT_THAT(alerts.shown[0].buttons, ElementsAre("OK"));
    }

    tests::CallLog log;
    platform::MemoryBundle bundle;
    tests::PlainApplication application;
    tests::RememberedAlerts alerts;
    tests::RememberedWorkspace workspace;
    tests::NotedUserDefaults defaults{log};
    tests::ScriptedSession session;
    tests::ScriptedURLSession urlSession{log};
    tests::WaitingMainQueue queue;
    UpdateSources sources{bundle, application, alerts, workspace, defaults, session, urlSession, queue};
    std::shared_ptr<UpdateCheck> check = UpdateCheck::make(sources, addressesOf(endpoint));
};

// When to check.

TEST_F(UpdateCheckTest, checksAtTheFirstLaunchAndWritesAllSettingsInOrder) {
    session.time = 50000;
    schedule();
    EXPECT_THAT(
        log, ElementsAre(
                 "read noUpdateCheck", "read dateLastUpdateCheck", "read updateCheckInt",
                 "resume https://tolvane.example/updates/versions.plist", "dateLastUpdateCheck = 50001",
                 "noUpdateCheck = false", "updateCheckInt = 43200"));
}

TEST_F(UpdateCheckTest, checksOnlyWhenMoreThanTheIntervalHasPassed) {
    struct Row {
        double last;
        double storedInterval;
        double now;
        bool isChecked;
        double intervalAfter;
    };
    const double infinity = std::numeric_limits<double>::infinity();
    std::vector<Row> rows{
        {1000, 0, 1000 + 43200, false, 43200},
        {1000, 0, 1000 + 43200.001, true, 43200},
        // The first launch, soon after the reference date.
        {0, 0, 43200, false, 43200},
        {0, 0, 43201, true, 43200},
        // The clock was set back.
        {2e9, 0, 1e9, false, 43200},
    };
    for (const double belowOneSecond : {0.5, -7.0, -infinity, 0.999}) {
        rows.push_back({1000, belowOneSecond, 1000 + 43200, false, 43200});
    }
    for (const double kept : {1.0, 1.5, 60.0, 1e6}) {
        rows.push_back({1000, kept, 1000 + kept, false, kept});
        rows.push_back({1000, kept, 1001 + kept, true, kept});
    }
    for (const auto& [last, stored, now, isChecked, intervalAfter] : rows) {
        SCOPED_TRACE(testing::Message() << "last " << last << ", interval " << stored << ", now " << now);
        urlSession.resumed.clear();
        defaults.kept.setDouble(last, "dateLastUpdateCheck");
        defaults.kept.setDouble(stored, "updateCheckInt");
        session.time = now;
        schedule();
        EXPECT_THAT(urlSession.resumed, SizeIs(isChecked ? 1 : 0));
        // The clock advances by one second at each look.
        EXPECT_EQ(lastCheck(), isChecked ? now + 1 : last);
        EXPECT_EQ(storedInterval(), intervalAfter);
    }
}

TEST_F(UpdateCheckTest, doesNotCheckWhenSwitchedOff) {
    defaults.kept.setBool(true, "noUpdateCheck");
    schedule();
    EXPECT_THAT(
        log, ElementsAre(
                 "read noUpdateCheck", "read dateLastUpdateCheck", "read updateCheckInt",
                 "noUpdateCheck = true", "updateCheckInt = 43200"));
}

// Starting.

TEST_F(UpdateCheckTest, isSilentWithoutAnInformationDictionary) {
    const platform::MemoryBundle empty;
    UpdateSources without{empty, application, alerts, workspace, defaults, session, urlSession, queue};
    UpdateCheck::make(without, addressesOf(endpoint))->schedule();
    EXPECT_THAT(urlSession.resumed, IsEmpty());
    EXPECT_EQ(lastCheck(), 1e9 + 1);
    expectSilence();
}

TEST_F(UpdateCheckTest, reportsThatThereIsNoVersion) {
    bundle.setInfoDictionary({{"CFBundleVersion", "1.2"}});
    schedule();
    expectError("Can't check for updates:\nNo app version string found.");
    EXPECT_THAT(urlSession.resumed, IsEmpty());
    EXPECT_EQ(lastCheck(), 1e9 + 1);
    EXPECT_EQ(storedInterval(), 43200);
}

// Sorting the response.

TEST_F(UpdateCheckTest, reportsAListThatCannotBeReadInAnyUsableResponse) {
    for (const int status : {200, 204, 226, 299}) {
        for (const char* const type : {"text/xml", "text/plain"}) {
            alerts.shown.clear();
            schedule();
            session.time += 50000;
            complete(platform::URLResponse{status, type}, tests::bytesOf("body"));
            SCOPED_TRACE(std::to_string(status) + ' ' + type);
            expectError("Error in update Property List.");
            expectUncheckedMenu();
        }
    }
}

TEST_F(UpdateCheckTest, isSilentAboutOtherStatusesAndKindsOfBodies) {
    using platform::URLResponse;
    std::vector<std::optional<URLResponse>> responses{
        std::nullopt, URLResponse{std::nullopt, "text/xml"}, URLResponse{200, std::nullopt}};
    for (const int status : {0, 100, 199, 300, 301, 304, 404, 500, 503, -200}) {
        responses.emplace_back(URLResponse{status, "text/xml"});
    }
    for (const char* const type :
         {"application/xml", "TEXT/XML", "text/XML", "Text/Plain", "text/html", "text/xml ", "",
          "text/xml; charset=utf-8", "application/x-plist"}) {
        responses.emplace_back(URLResponse{200, type});
    }
    schedule();
    for (const auto& response : responses) {
        SCOPED_TRACE(
            response
                ? std::to_string(response->statusCode.value_or(-1)) + ' ' + response->MIMEType.value_or("-")
                : "none");
        complete(response);
        expectSilence();
    }
}

TEST_F(UpdateCheckTest, isSilentAboutFailures) {
    schedule();
    complete(std::nullopt, std::nullopt, platform::posixError(111));
    expectSilence();
    complete(platform::URLResponse{200, "text/xml"}, bodyOf(Array{entry("2")}), platform::posixError(104));
    expectSilence();
    EXPECT_EQ(lastCheck(), 1e9 + 1);
}

TEST_F(UpdateCheckTest, leavesTheReadingToTheMainQueue) {
    schedule();
    log.clear();
    std::thread([this] {
        urlSession.resumed.back()(
            bodyOf(Array{entry("1.2")}), platform::URLResponse{200, "text/xml"}, std::nullopt);
    }).join();
    expectSilence();
    ASSERT_THAT(queue.waiting, SizeIs(1));
    queue.doAll();
    expectCheckedMenu();
    EXPECT_THAT(log, IsEmpty()) << "settings are a matter of the launch alone";
}

TEST_F(UpdateCheckTest, dropsTheListOnceTheDelegateIsGone) {
    schedule();
    urlSession.resumed.back()(
        bodyOf(Array{entry("2")}), platform::URLResponse{200, "text/xml"}, std::nullopt);
    check.reset();
    queue.doAll();
    expectSilence();
}

// Reading the list.

TEST_F(UpdateCheckTest, readsTheListInEachForm) {
    const Array entries{entry("2")};
    for (const auto& list :
         {tests::binaryPropertyList(entries), tests::xmlPropertyList(entries),
          tests::textPropertyList(entries)}) {
        alerts.shown.clear();
        check->processList(tests::bytesOf(list.value()), "1.2");
        EXPECT_THAT(offeredVersions(), ElementsAre("2")) << *list;
    }
}

TEST_F(UpdateCheckTest, reportsAnEmptyList) {
    process({});
    expectError("Update Property List has no entries.");
    expectUncheckedMenu();
}

TEST_F(UpdateCheckTest, onlyMarksTheMenuForTheRunningVersion) {
    Dictionary running = entry("1.2");
    running.set("Notes", Array{});
    process({running});
    expectCheckedMenu();
    EXPECT_THAT(alerts.shown, IsEmpty());
}

TEST_F(UpdateCheckTest, onlyMarksTheMenuForADownloadFromElsewhere) {
    for (const char* const url :
         {"https://elsewhere.example/tolvane", "", "https://tolvane.example/Downloads/x",
          "http://tolvane.example/downloads/x", "no URL"}) {
        process({entry("2", url)});
        EXPECT_THAT(alerts.shown, IsEmpty()) << url;
    }
    expectCheckedMenu();
}

TEST_F(UpdateCheckTest, offersAnotherVersion) {
    process({entry("2.0")});
    expectCheckedMenu();
    ASSERT_THAT(alerts.shown, SizeIs(1));
    EXPECT_EQ(alerts.shown[0].messageText, "An update to this app to version 2.0 is available.");
    EXPECT_EQ(
        alerts.shown[0].informativeText,
        "You are currently running Tolvane version 1.2.\n"
        "Please choose whether to download this update now in your default browser.");
    EXPECT_EQ(alerts.shown[0].style, platform::AlertStyle::informational);
    EXPECT_THAT(alerts.shown[0].buttons, ElementsAre("Ignore", "Download"));
    EXPECT_EQ(alerts.shown[0].cancelButton, 0U);
}

TEST_F(UpdateCheckTest, offersEveryVersionThatIsWrittenDifferently) {
    process({entry("1.1"), entry("1.2.0"), entry("1.2 "), entry(""), entry("01.2"), entry("1.2")});
    EXPECT_THAT(offeredVersions(), ElementsAre("1.1", "1.2.0", "1.2 ", "", "01.2"));
}

TEST_F(UpdateCheckTest, downloadsOnlyWhenAskedTo) {
    for (const std::size_t answer : {0U, 2U, 3U}) {
        alerts.answer = answer;
        process({entry("2")});
        EXPECT_THAT(workspace.opened, IsEmpty()) << answer;
    }
    alerts.answer = 1;
    process({entry("2")});
    EXPECT_THAT(workspace.opened, ElementsAre(download));
}

TEST_F(UpdateCheckTest, hasTheExactAddressOpenedAndGoesOnWhenNothingOpensIt) {
    alerts.answer = 1;
    workspace.answer = false;
    const std::string odd = "https://tolvane.example/downloads/a%2Fb?c=%20&d=%41#e";
    process({entry("2", odd), entry("3", "https://mirror.example/?from=" + std::string(download))});
    EXPECT_THAT(
        workspace.opened,
        ElementsAre(odd, "https://mirror.example/?from=https://tolvane.example/downloads/tolvane-2.tar.xz"));
}

TEST_F(UpdateCheckTest, visitsAllEntriesInOrder) {
    process(
        {Dictionary{{"AppName", "Another"}}, entry("3"), Dictionary{{"AppName", "tolvane"}}, entry("1.2"),
         entry("2"), Dictionary{{"AppName", "Tolvane "}, {"Version", true}}, entry("1")});
    EXPECT_THAT(offeredVersions(), ElementsAre("3", "2", "1"));
}

TEST_F(UpdateCheckTest, leavesTheMenuAloneForOtherApplications) {
    process({Dictionary{{"AppName", "Another"}}, Dictionary{{"AppName", "More"}, {"URL", 5.0}}});
    expectUncheckedMenu();
    EXPECT_THAT(alerts.shown, IsEmpty());
}

TEST_F(UpdateCheckTest, goesWithoutAHelpMenuOrItsItem) {
    application.hasHelpMenu = false;
    process({entry("2")});
    EXPECT_THAT(alerts.shown, SizeIs(1));
    application.hasHelpMenu = true;
    application.item->setTitle("Something else");
    process({entry("2")});
    EXPECT_THAT(alerts.shown, SizeIs(2));
    EXPECT_EQ(application.item->title(), "Something else");
    EXPECT_EQ(application.item->state(), MenuItemState::off);
}

// What a list never is.

using UpdateCheckDeathTest = UpdateCheckTest;

TEST_F(UpdateCheckDeathTest, stopsWithoutABody) {
    schedule();
    EXPECT_DEATH(complete(platform::URLResponse{200, "text/xml"}, std::nullopt), "tolvane: fatal: .*body");
}

TEST_F(UpdateCheckDeathTest, stopsAtAListOfTheWrongStructure) {
    struct Row {
        platform::Value list;
        std::string message;
    };
    const std::string url = download;
    for (const auto& [list, message] : std::vector<Row>{
             {entry("2"), "is not an array"},
             {"text", "is not an array"},
             {Array{entry("1.2"), "text"}, "is not a dictionary"},
             {Array{Array{entry("2")}}, "is not a dictionary"},
             {Array{Dictionary{{"Version", "2"}, {"URL", url}}}, "AppName"},
             {Array{Dictionary{{"AppName", 5.0}}}, "AppName"},
             {Array{Dictionary{}}, "AppName"},
             {Array{Dictionary{{"AppName", "Tolvane"}, {"URL", url}}}, "Version"},
             {Array{Dictionary{{"AppName", "Tolvane"}, {"Version", 2.0}, {"URL", url}}}, "Version"},
             {Array{Dictionary{{"AppName", "Tolvane"}, {"Version", "1.2"}}}, "URL"},
             {Array{Dictionary{{"AppName", "Tolvane"}, {"Version", "2"}, {"URL", Array{}}}}, "URL"}}) {
        EXPECT_DEATH(check->processList(bodyOf(list), "1.2"), "tolvane: fatal: .*" + message);
    }
}

TEST_F(UpdateCheckDeathTest, stopsWhenTheAddressToOpenIsNotAURL) {
    alerts.answer = 1;
    const std::string prefix = "https://tolvane.example/downloads/";
    for (const std::string& address :
         {prefix + "%zz", "see " + prefix, prefix + "a b", prefix + "a|b", prefix + "<a>", prefix + "\u00FC",
          prefix + "a\n"}) {
        EXPECT_DEATH(
            process({entry("2", address)}), "fatal: .*URL in an entry of the update list is not valid");
    }
    alerts.answer = 0;
    process({entry("2", prefix + "%zz")});
    EXPECT_THAT(alerts.shown, SizeIs(1)) << "the address of a version that is ignored is not parsed";
}

TEST_F(UpdateCheckDeathTest, stopsWhenTheEndpointIsNotAURL) {
    const auto broken = UpdateCheck::make(sources, addressesOf("nonsense"));
    EXPECT_DEATH(broken->start(), "fatal: .*update list");
}

} // namespace
} // namespace tolvane::app
