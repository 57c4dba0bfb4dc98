#include "tests/oracle/Agreement.h"

#include "tests/oracle/BookmarkOracle.h"
#include "tests/oracle/Expectation.h"
#include "tests/oracle/Oracle.h"
#include "tests/oracle/ReportText.h"
#include "tests/oracle/Tolvane.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <utility>

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

// Those of the items that the program could report on in both runs.
std::map<std::string, Reports> reportsOf(const Paths& paths, std::optional<std::uint32_t> user) {
    auto textRun = reportOn(paths);
    auto jsonRun = reportOn(paths, true);
    textRun.user = user;
    jsonRun.user = user;
    const ProcessOutcome text = run(textRun);
    const ProcessOutcome objects = run(jsonRun);

    Paths textPaths;
    std::vector<Heading> headings;
    Paths jsonPaths;
    for (const auto& path : paths) {
        if (!isComplainedOf(path, text.err)) {
            textPaths.push_back(path);
            headings.push_back(headingOf(path));
        }
        if (!isComplainedOf(path, objects.err)) {
            jsonPaths.push_back(path);
        }
    }
    EXPECT_EQ(text.status, textPaths.size() == paths.size() ? 0 : 1) << text.err;
    EXPECT_EQ(objects.status, jsonPaths.size() == paths.size() ? 0 : 1) << objects.err;

    std::map<std::string, Reports> reports;
    const auto texts = reportsIn(text.out, headings);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        reports[textPaths[i]].text = texts[i];
    }
    const auto lines = linesOf(objects.out);
    EXPECT_EQ(lines.size(), jsonPaths.size());
    for (std::size_t i = 0; i < std::min(lines.size(), jsonPaths.size()); ++i) {
        reports[jsonPaths[i]].object = json::parse(lines[i], nullptr, false);
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
