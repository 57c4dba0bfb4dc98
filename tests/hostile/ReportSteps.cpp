#include "tests/hostile/ReportSteps.h"

#include "tests/oracle/Tolvane.h"

#include <cerrno>
#include <cstring>

namespace tolvane::tests {

// Some stages begin with a look at the item, and both ways along the path end with one.
Stage ReportSteps::stageOf(const PendingCall& call) const {
    switch (looks_) {
    case 1:
        if (call.name == "listxattr" || call.name == "getxattr") {
            return Stage::attributes;
        }
        return call.name == "statx" ? Stage::identity : Stage::forks;
    case 2:
        return call.path == "/proc/self/mountinfo" || stage_ == Stage::way ? Stage::way : Stage::dictionary;
    case 3:
        return stage_ == Stage::way && call.path == path_ ? Stage::way : Stage::volumes;
    case 4:
        return Stage::volumes;
    case 5:
        return call.path == path_ ? Stage::resolution : Stage::date;
    default:
        return Stage::date;
    }
}

std::optional<Step> ReportSteps::next(const PendingCall& call) {
    if (call.name == "statx" && call.path == path_) {
        ++looks_;
    }
    if (looks_ == 0) {
        return std::nullopt;
    }
    const Stage stage = stageOf(call);
    index_ = stage == stage_ ? index_ + 1 : 0;
    stage_ = stage;
    return Step{stage, index_};
}

Fields GatedReport::reportThrough(const Gate& gate) const {
    const auto outcome = runThroughGate(tolvane({"report", item}).command, gate);
    EXPECT_EQ(outcome.status, 0) << "signal " << outcome.signal;
    EXPECT_EQ(outcome.err, "");
    return reportIn(outcome.out, item);
}

void GatedReportOfAttributes::SetUp() {
    GatedReport::SetUp();
    if (!setExtendedAttribute(item, "user.a", "12") || !setExtendedAttribute(item, "user.b", "345")) {
        GTEST_SKIP() << item << ": " << std::strerror(errno);
    }
}

} // namespace tolvane::tests
