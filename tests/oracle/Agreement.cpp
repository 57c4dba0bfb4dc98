#include "tests/oracle/Agreement.h"

#include "tests/oracle/BookmarkOracle.h"
#include "tests/oracle/Expectation.h"
#include "tests/oracle/Oracle.h"
#include "tests/oracle/ReportText.h"
#include "tests/oracle/Tolvane.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <system_error>
#include <utility>
#include <unistd.h>

namespace tolvane::tests {

namespace {

using nlohmann::json;
using Paths = std::vector<std::string>;

// Both reports of an item.
struct Reports {
    Fields text;
    json object;
};

bool isComplainedOf(const std::string& path, const std::string& errors) {
    return errors.contains("tolvane-cli: " + path + ": ");
}

// The items that a run reported on, and what it printed.
struct Run {
    Paths paths;
    std::string out;
};

Run runOn(const Paths& paths, std::optional<std::uint32_t> user, bool json) {
    ProcessSetup setup = reportOn(paths, json);
    setup.user = user;
    const ProcessOutcome outcome = run(setup);
    Paths reported = paths;
    std::erase_if(
        reported, [&outcome](const std::string& path) { return isComplainedOf(path, outcome.err); });
    EXPECT_EQ(outcome.status, reported.size() == paths.size() ? 0 : 1) << outcome.err;
    return {reported, outcome.out};
}

// Those of the items that the program could report on in both runs.
std::map<std::string, Reports> reportsOf(const Paths& paths, std::optional<std::uint32_t> user) {
    const Run text = runOn(paths, user, false);
    const Run objects = runOn(paths, user, true);
    std::vector<Heading> headings;
    std::ranges::transform(text.paths, std::back_inserter(headings), headingOf);
    std::map<std::string, Reports> reports;
    const auto texts = reportsIn(text.out, headings);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        reports[text.paths[i]].text = texts[i];
    }
    const auto lines = linesOf(objects.out);
    EXPECT_EQ(lines.size(), objects.paths.size());
    for (std::size_t i = 0; i < std::min(lines.size(), objects.paths.size()); ++i) {
        reports[objects.paths[i]].object = json::parse(lines[i], nullptr, false);
    }
    std::erase_if(reports, [](const auto& entry) {
        return entry.second.text.empty() || !entry.second.object.is_object();
    });
    return reports;
}

void compare(
    const std::string& path, const Reports& reports, const ItemFacts& facts, const PlaceFacts& place) {
    SCOPED_TRACE(path);
    Fields expected = expectedFields(path, facts);
    expected["bookmarkPathTextbox"] = expectedBookmarkPath(place);
    EXPECT_EQ(comparable(reports.text), expected);
    for (const auto& bookmark :
         {reports.text.at("bookmarkTextbox"), reports.object.value("bookmarkTextbox", "none")}) {
        expectBookmark(bookmark, place, facts.mode);
    }

    json fields = reports.object;
    json typed = fields["facts"];
    fields.erase("facts");
    Fields texts = fields.get<Fields>();
    json expectedTyped = expectedFacts(path, facts);
    expectedTyped.update(factsToldByTexts(path, texts));
    EXPECT_TRUE(typed["gathered"]["date"].is_string());
    typed.erase("gathered");
    for (const std::string date : {"created", "modified"}) {
        if (!typed[date].is_null()) {
            EXPECT_TRUE(typed[date]["seconds"].is_number_float());
            typed[date] = json(typed[date]["date"]);
        }
    }
    EXPECT_EQ(typed, expectedTyped);
    const auto type = reports.text.find("typeTextbox");
    EXPECT_EQ(texts["typeTextbox"], type->second);
    EXPECT_EQ(comparable(std::move(texts)), expected);
}

} // namespace

Paths itemsBelow(const std::string& folder, std::size_t most) {
    Paths paths;
    std::error_code failure;
    using Walk = std::filesystem::recursive_directory_iterator;
    for (Walk item(folder, std::filesystem::directory_options::skip_permission_denied, failure);
         item != Walk() && paths.size() < most && !failure; item.increment(failure)) {
        // stat enters a folder to find its mount point, so a folder that this user may not enter has none to
        // compare.
        std::error_code unknown;
        if (!item->is_directory(unknown) || access(item->path().c_str(), X_OK) == 0) {
            paths.push_back(item->path().string());
        }
    }
    return paths;
}

Agreement expectAgreement(const Paths& paths, std::optional<std::uint32_t> user) {
    constexpr int attempts = 4;
    Agreement agreement;
    agreement.restless = paths;
    for (int attempt = 0; attempt < attempts && !agreement.restless.empty(); ++attempt) {
        const auto before = lookAt(agreement.restless, user);
        const auto placesBefore = placesOf(agreement.restless, user);
        Paths there;
        for (const auto& [path, facts] : before) {
            if (placesBefore.contains(path)) {
                there.push_back(path);
            }
        }
        const auto reports = reportsOf(there, user);
        const auto after = lookAt(there, user);
        const auto placesAfter = placesOf(there, user);
        for (const auto& [path, facts] : after) {
            const auto report = reports.find(path);
            const auto place = placesAfter.find(path);
            const bool isStill = facts == before.at(path) && place != placesAfter.end()
                                 && place->second == placesBefore.at(path);
            if (isStill && report != reports.end()) {
                compare(path, report->second, facts, place->second);
                ++agreement.compared;
                std::erase(agreement.restless, path);
            }
            if (testing::Test::HasFailure()) {
                return agreement; // Thousands of differences would bury the first.
            }
        }
    }
    return agreement;
}

} // namespace tolvane::tests
