// System calls that fail, one after the other, while the program reports on an item and then on another.
#include "tests/hostile/LostFacts.h"
#include "tests/hostile/ReportSteps.h"
#include "tests/oracle/Tolvane.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {
namespace {

struct HeldStep {
    Step step;
    PendingCall call;
};

class FaultyCalls : public GatedReportOfAttributes, public testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        GatedReportOfAttributes::SetUp();
        if (IsSkipped()) {
            return;
        }
        ReportSteps progress(item);
        const auto outcome = runThroughGate(command(), [&](const PendingCall& call) {
            if (const auto step = progress.next(call)) {
                steps.push_back({*step, call});
            }
            return 0;
        });
        ASSERT_EQ(outcome.status, 0) << outcome.err;
        const auto reports = reportsIn(outcome.out, {headingOf(item), headingOf(other)});
        itemTexts = reports.front();
        otherTexts = reports.back();
        ASSERT_EQ(itemTexts.at("xattrSize"), "5");
        ASSERT_EQ(itemTexts.at("bookmarkPathTextbox"), item);
    }

    std::vector<std::string> command() const { return tolvane({"report", item, other}).command; }

    // Account names and the facts of volumes come from other files than the item. A fault there may cost
    // them, and nothing else.
    void forgive(Fields& expected, const Fields& seen, const HeldStep& faulty) const {
        const bool isOfAccounts = faulty.step.stage == Stage::dictionary && faulty.call.path != item;
        for (const char* name : {"ownerNameTextbox", "groupNameTextbox"}) {
            if (isOfAccounts && seen.at(name).empty()) {
                expected[name] = "";
            }
        }
        if (faulty.step.stage == Stage::volumes && !seen.at("bookmarkTextbox").empty()) {
            expected["bookmarkTextbox"] = seen.at("bookmarkTextbox");
            // A bookmark without the facts of its volume leads nowhere.
            const bool isOfVolume =
                faulty.call.path != item && (faulty.call.name == "statfs" || faulty.call.name == "statx");
            if (isOfVolume && seen.at("bookmarkPathTextbox") == noBookmarkText) {
                expected["bookmarkPathTextbox"] = noBookmarkText;
            }
        }
        expected["date"] = seen.at("date");
    }

    /// What is left of the texts when this call has failed and nothing makes up for it.
    Fields withoutAnswer(Fields texts, const HeldStep& held) const {
        const bool isLook = held.call.name == "statx";
        switch (held.step.stage) {
        case Stage::forks:
            // Without a list of attributes there is no resource fork either, as in this item.
            return texts;
        case Stage::attributes:
            return withoutAttributeSizes(std::move(texts));
        case Stage::dictionary:
            if (isLook) {
                return withoutDictionary(std::move(texts));
            }
            if (held.call.path == item) {
                texts["inodeText"] = "";
            }
            return texts;
        case Stage::way:
            return withoutBookmark(std::move(texts));
        case Stage::resolution:
            return withoutResolution(std::move(texts));
        default:
            return texts;
        }
    }

    /// The same for a call that fails alone.
    Fields textsWithout(const HeldStep& faulty, int error) const {
        // Too little room is offered once, and then more.
        const bool hasMoreRoom =
            error == ERANGE && faulty.step.stage == Stage::dictionary && faulty.call.name != "statx";
        // What is not seen at its path is looked for by its number, and found where it is.
        const bool isFoundAgain = faulty.step.stage == Stage::resolution;
        return hasMoreRoom || isFoundAgain ? itemTexts : withoutAnswer(itemTexts, faulty);
    }

    /// The same for a step and all later ones, of an item about which nothing is answered any more.
    Fields textsWithoutAnyFrom(const Step& first) const {
        Fields texts = itemTexts;
        for (const HeldStep& held : steps) {
            const bool isLater = held.step.stage > first.stage
                                 || (held.step.stage == first.stage && held.step.index >= first.index);
            if (isLater && held.call.path == item) {
                texts = withoutAnswer(std::move(texts), held);
            }
        }
        return texts;
    }

    void expectComplaint(const ProcessOutcome& outcome, int error) const {
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.err, "tolvane-cli: " + item + ": " + std::strerror(error) + "\n");
        reportIn(outcome.out, other);
    }

    void expectTexts(const ProcessOutcome& outcome, Fields expected, const HeldStep& faulty) {
        ASSERT_EQ(outcome.status, 0) << "signal " << outcome.signal << "\n" << outcome.err;
        EXPECT_EQ(outcome.err, "");
        const auto reports = reportsIn(outcome.out, {headingOf(item), headingOf(other)});
        forgive(expected, reports.front(), faulty);
        expectFields(reports.front(), expected);
        Fields expectedOfOther = otherTexts;
        forgive(expectedOfOther, reports.back(), faulty);
        expectFields(reports.back(), expectedOfOther);
    }

    /// Once the item's facts are gathered, everything is asked of the second item, or of neither: the first
    /// report stands as it is, and the second comes after it or is complained of.
    void expectFirstTexts(const ProcessOutcome& outcome, int error) const {
        const bool isComplaint = outcome.status == 1;
        ASSERT_TRUE(isComplaint || outcome.status == 0) << "signal " << outcome.signal << "\n" << outcome.err;
        EXPECT_EQ(
            outcome.err,
            isComplaint ? "tolvane-cli: " + other + ": " + std::strerror(error) + "\n" : std::string());
        std::vector<Heading> headings{headingOf(item), headingOf(other)};
        headings.resize(isComplaint ? 1 : 2);
        const auto reports = reportsIn(outcome.out, headings);
        Fields expected = itemTexts;
        expected["date"] = reports.front().at("date");
        expectFields(reports.front(), expected);
    }

    std::string other = std::filesystem::canonical(folder.file("other.txt", "more words")).string();
    std::vector<HeldStep> steps;
    Fields itemTexts;
    Fields otherTexts;
};

std::string nameOf(const HeldStep& held, int error) {
    return "call " + std::to_string(held.step.index) + " of stage "
           + std::to_string(static_cast<int>(held.step.stage)) + ", " + held.call.name + " " + held.call.path
           + ": " + std::strerror(error);
}

TEST_P(FaultyCalls, costTheirOwnFactsWhenOneFails) {
    const int error = GetParam();
    std::set<Stage> stages;
    for (const HeldStep& faulty : steps) {
        SCOPED_TRACE(nameOf(faulty, error));
        stages.insert(faulty.step.stage);
        const bool isOfOthers = faulty.step.stage != Stage::way && faulty.call.path != item;
        if (isOfOthers && error != ENOENT && error != EIO) {
            continue; // many, which do not distinguish errors
        }
        ReportSteps progress(item);
        bool hasFailed = false;
        const auto outcome = runThroughGate(command(), [&](const PendingCall& call) {
            const bool fails = !hasFailed && progress.next(call) == faulty.step;
            hasFailed = hasFailed || fails;
            return fails ? error : 0;
        });
        ASSERT_TRUE(hasFailed);
        if (faulty.step.stage == Stage::identity) {
            expectComplaint(outcome, error);
        } else if (faulty.step.stage == Stage::date) {
            expectFirstTexts(outcome, error);
        } else {
            expectTexts(outcome, textsWithout(faulty, error), faulty);
        }
    }
    EXPECT_EQ(stages.size(), 8U) << "every stage has calls";
}

TEST_P(FaultyCalls, costAllLaterFactsWhenTheItemIsAnsweredForNoMore) {
    const int error = GetParam();
    for (const HeldStep& faulty : steps) {
        if (faulty.call.path != item || faulty.step.stage == Stage::volumes) {
            continue; // the second look fails, and is then a first one
        }
        SCOPED_TRACE(nameOf(faulty, error));
        ReportSteps progress(item);
        bool isGone = false;
        const auto outcome = runThroughGate(command(), [&](const PendingCall& call) {
            isGone = isGone || progress.next(call) == faulty.step;
            return isGone && call.path == item ? error : 0;
        });
        ASSERT_TRUE(isGone);
        if (faulty.step.stage == Stage::identity) {
            expectComplaint(outcome, error);
        } else {
            expectTexts(outcome, textsWithoutAnyFrom(faulty.step), faulty);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    With,
    FaultyCalls,
    testing::Values(ENOENT, EACCES, EIO, ELOOP, ENOMEM, ERANGE),
    [](const testing::TestParamInfo<int>& error) { return std::string(strerrorname_np(error.param)); });

} // namespace
} // namespace tolvane::tests
