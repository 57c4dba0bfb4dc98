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

    /// Completes the request of the check that was started last, and does what comes of it.
    void complete(
        std::optional<platform::URLResponse> response,
        std::optional<platform::Data> data = bodyOf(Array{entry("2")}),
        std::optional<platform::Error> error = std::nullopt) {
        ASSERT_THAT(urlSession.resumed, testing::Not(IsEmpty()));
        urlSession.resumed.back()(std::move(data), std::move(response), std::move(error));
        queue.doAll();
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
    defaults.kept.setDouble(1000, "dateLastUpdateCheck");
    session.time = 1000 + 43200;
    schedule();
    EXPECT_THAT(
        log, ElementsAre(
                 "read noUpdateCheck", "read dateLastUpdateCheck", "read updateCheckInt",
                 "noUpdateCheck = false", "updateCheckInt = 43200"));
    EXPECT_EQ(defaults.kept.doubleForKey("dateLastUpdateCheck"), 1000);
    session.time = 1000 + 43200.001;
    schedule();
    EXPECT_THAT(urlSession.resumed, SizeIs(1));
}

TEST_F(UpdateCheckTest, checksWhenTheFirstLaunchIsTheIntervalAfterTheReferenceDateAndMore) {
    session.time = 43200;
    schedule();
    EXPECT_THAT(urlSession.resumed, IsEmpty());
    session.time = 43201;
    schedule();
    EXPECT_THAT(urlSession.resumed, SizeIs(1));
}

TEST_F(UpdateCheckTest, replacesAnIntervalBelowOneSecond) {
    for (const double interval : {0.5, 0.0, -7.0, -std::numeric_limits<double>::infinity(), 0.999}) {
        defaults.kept.setDouble(interval, "updateCheckInt");
        defaults.kept.setDouble(1000, "dateLastUpdateCheck");
        session.time = 1000 + 43200;
        schedule();
        EXPECT_THAT(urlSession.resumed, IsEmpty());
        EXPECT_EQ(defaults.kept.doubleForKey("updateCheckInt"), 43200) << interval;
    }
}

TEST_F(UpdateCheckTest, keepsAnIntervalOfOneSecondAndMore) {
    for (const double interval : {1.0, 1.5, 60.0, 1e6}) {
        urlSession.resumed.clear();
        defaults.kept.setDouble(interval, "updateCheckInt");
        defaults.kept.setDouble(1000, "dateLastUpdateCheck");
        session.time = 1000 + interval;
        schedule();
        EXPECT_THAT(urlSession.resumed, IsEmpty());
        session.time = 1001 + interval;
        schedule();
        EXPECT_THAT(urlSession.resumed, SizeIs(1));
        EXPECT_EQ(defaults.kept.doubleForKey("updateCheckInt"), interval);
        EXPECT_EQ(defaults.kept.doubleForKey("dateLastUpdateCheck"), 1002 + interval);
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

TEST_F(UpdateCheckTest, doesNotCheckWhenTheClockWasSetBack) {
    defaults.kept.setDouble(2e9, "dateLastUpdateCheck");
    schedule();
    EXPECT_THAT(urlSession.resumed, IsEmpty());
    EXPECT_EQ(defaults.kept.doubleForKey("dateLastUpdateCheck"), 2e9);
}

// Starting.

TEST_F(UpdateCheckTest, isSilentWithoutAnInformationDictionary) {
    const platform::MemoryBundle empty;
    UpdateSources without{empty, application, alerts, workspace, defaults, session, urlSession, queue};
    UpdateCheck::make(without, addressesOf(endpoint))->schedule();
    EXPECT_THAT(urlSession.resumed, IsEmpty());
    EXPECT_EQ(defaults.kept.doubleForKey("dateLastUpdateCheck"), 1e9 + 1);
    expectSilence();
}

TEST_F(UpdateCheckTest, tellsThatThereIsNoVersion) {
    bundle.setInfoDictionary({{"CFBundleVersion", "1.2"}});
    schedule();
    expectError("Can't check for updates:\nNo app version string found.");
    EXPECT_THAT(urlSession.resumed, IsEmpty());
    EXPECT_EQ(defaults.kept.doubleForKey("dateLastUpdateCheck"), 1e9 + 1);
    EXPECT_EQ(defaults.kept.doubleForKey("updateCheckInt"), 43200);
}

TEST_F(UpdateCheckTest, returnsBeforeTheResponseComes) {
    schedule();
    expectSilence();
    EXPECT_THAT(queue.waiting, IsEmpty());
}

// Sorting the response.

TEST_F(UpdateCheckTest, readsUsableResponses) {
    for (const int status : {200, 204, 226, 299}) {
        for (const char* const type : {"text/xml", "text/plain"}) {
            alerts.shown.clear();
            schedule();
            session.time += 50000;
            complete(platform::URLResponse{status, type}, tests::bytesOf("body"));
            SCOPED_TRACE(std::to_string(status) + ' ' + type);
            expectError("Error in update Property List.");
        }
    }
}

TEST_F(UpdateCheckTest, isSilentAboutOtherStatuses) {
    schedule();
    for (const int status : {0, 100, 199, 300, 301, 304, 404, 500, 503, -200}) {
        complete(platform::URLResponse{status, "text/xml"});
        expectSilence();
    }
}

TEST_F(UpdateCheckTest, isSilentAboutOtherKindsOfBodies) {
    schedule();
    for (const char* const type :
         {"application/xml", "TEXT/XML", "text/XML", "Text/Plain", "text/html", "text/xml ", "",
          "text/xml; charset=utf-8", "application/x-plist"}) {
        complete(platform::URLResponse{200, type});
        expectSilence();
    }
    complete(platform::URLResponse{200, std::nullopt});
    expectSilence();
}

TEST_F(UpdateCheckTest, isSilentAboutFailures) {
    schedule();
    complete(std::nullopt, std::nullopt, platform::posixError(111));
    expectSilence();
    complete(std::nullopt);
    expectSilence();
    complete(platform::URLResponse{200, "text/xml"}, bodyOf(Array{entry("2")}), platform::posixError(104));
    expectSilence();
    complete(platform::URLResponse{std::nullopt, "text/xml"});
    expectSilence();
    EXPECT_EQ(defaults.kept.doubleForKey("dateLastUpdateCheck"), 1e9 + 1);
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

TEST_F(UpdateCheckTest, tellsThatTheListCannotBeRead) {
    check->processList(tests::bytesOf("junk"), "1.2");
    expectError("Error in update Property List.");
    expectUncheckedMenu();
}

TEST_F(UpdateCheckTest, readsTheListInEachForm) {
    const Array entries{entry("2")};
    for (const auto& list :
         {tests::binaryPropertyList(entries), tests::xmlPropertyList(entries),
          tests::textPropertyList(entries)}) {
        alerts.shown.clear();
        check->processList(tests::bytesOf(list.value()), "1.2");
        ASSERT_THAT(alerts.shown, SizeIs(1)) << *list;
        EXPECT_EQ(alerts.shown[0].messageText, "An update to this app to version 2 is available.") << *list;
    }
}

TEST_F(UpdateCheckTest, tellsThatTheListIsEmpty) {
    process({});
    expectError("Update Property List has no entries.");
    expectUncheckedMenu();
}

TEST_F(UpdateCheckTest, onlyMarksTheMenuForTheRunningVersion) {
    process({entry("1.2")});
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
    EXPECT_THAT(alerts.shown, SizeIs(5));
}

TEST_F(UpdateCheckTest, downloadsOnlyWhenToldTo) {
    for (const std::size_t answer : {0U, 2U, 3U}) {
        alerts.answer = answer;
        process({entry("2")});
        EXPECT_THAT(workspace.opened, IsEmpty()) << answer;
    }
    alerts.answer = 1;
    process({entry("2")});
    EXPECT_THAT(workspace.opened, ElementsAre(download));
}

TEST_F(UpdateCheckTest, goesOnWhenNothingOpensTheAddress) {
    alerts.answer = 1;
    workspace.answer = false;
    process({entry("2"), entry("3")});
    EXPECT_THAT(alerts.shown, SizeIs(2));
}

TEST_F(UpdateCheckTest, hasTheExactAddressOpened) {
    alerts.answer = 1;
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
    ASSERT_THAT(alerts.shown, SizeIs(3));
    EXPECT_EQ(alerts.shown[0].messageText, "An update to this app to version 3 is available.");
    EXPECT_EQ(alerts.shown[1].messageText, "An update to this app to version 2 is available.");
    EXPECT_EQ(alerts.shown[2].messageText, "An update to this app to version 1 is available.");
}

TEST_F(UpdateCheckTest, leavesTheMenuAloneForOtherApplications) {
    process({Dictionary{{"AppName", "Another"}}, Dictionary{{"AppName", "More"}, {"URL", 5.0}}});
    expectUncheckedMenu();
    EXPECT_THAT(alerts.shown, IsEmpty());
}

TEST_F(UpdateCheckTest, ignoresOtherKeys) {
    Dictionary more = entry("1.2");
    more.set("Notes", Array{});
    process({more});
    EXPECT_THAT(alerts.shown, IsEmpty());
    expectCheckedMenu();
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

TEST_F(UpdateCheckDeathTest, stopsWhenTheListIsNoArray) {
    EXPECT_DEATH(check->processList(bodyOf(entry("2")), "1.2"), "tolvane: fatal: .*is not an array");
    EXPECT_DEATH(check->processList(bodyOf("text"), "1.2"), "tolvane: fatal: .*is not an array");
}

TEST_F(UpdateCheckDeathTest, stopsWhenAnEntryIsNoDictionary) {
    EXPECT_DEATH(process({entry("1.2"), "text"}), "tolvane: fatal: .*is not a dictionary");
    EXPECT_DEATH(process({Array{entry("2")}}), "tolvane: fatal: .*is not a dictionary");
}

TEST_F(UpdateCheckDeathTest, stopsWhenAnEntryHasNoName) {
    EXPECT_DEATH(process({Dictionary{{"Version", "2"}, {"URL", download}}}), "tolvane: fatal: .*AppName");
    EXPECT_DEATH(process({Dictionary{{"AppName", 5.0}}}), "tolvane: fatal: .*AppName");
    EXPECT_DEATH(process({Dictionary{}}), "tolvane: fatal: .*AppName");
}

TEST_F(UpdateCheckDeathTest, stopsWhenAnEntryOfThisProgramHasNoVersion) {
    EXPECT_DEATH(process({Dictionary{{"AppName", "Tolvane"}, {"URL", download}}}), "fatal: .*Version");
    EXPECT_DEATH(
        process({Dictionary{{"AppName", "Tolvane"}, {"Version", 2.0}, {"URL", download}}}),
        "fatal: .*Version");
}

TEST_F(UpdateCheckDeathTest, stopsWhenAnEntryOfThisProgramHasNoAddress) {
    EXPECT_DEATH(process({Dictionary{{"AppName", "Tolvane"}, {"Version", "1.2"}}}), "fatal: .*URL");
    EXPECT_DEATH(
        process({Dictionary{{"AppName", "Tolvane"}, {"Version", "2"}, {"URL", Array{}}}}), "fatal: .*URL");
}

TEST_F(UpdateCheckDeathTest, stopsWhenTheAddressToOpenIsNoURL) {
    alerts.answer = 1;
    EXPECT_DEATH(
        process({entry("2", "https://tolvane.example/downloads/%zz")}),
        "fatal: .*URL in an entry of the update list is not valid");
    EXPECT_DEATH(
        process({entry("2", "see https://tolvane.example/downloads/")}),
        "fatal: .*URL in an entry of the update list is not valid");
    for (const std::string rest : {"a b", "a|b", "<a>", "\u00FC", "a\n"}) {
        EXPECT_DEATH(
            process({entry("2", "https://tolvane.example/downloads/" + rest)}),
            "fatal: .*URL in an entry of the update list is not valid");
    }
    alerts.answer = 0;
    process({entry("2", "https://tolvane.example/downloads/%zz")});
    EXPECT_THAT(alerts.shown, SizeIs(1)) << "nothing is made of an address that nobody wants";
}

TEST_F(UpdateCheckDeathTest, stopsWhenTheEndpointIsNoURL) {
    const auto broken = UpdateCheck::make(sources, addressesOf("nonsense"));
    EXPECT_DEATH(broken->start(), "fatal: .*update list");
}

} // namespace
} // namespace tolvane::app
