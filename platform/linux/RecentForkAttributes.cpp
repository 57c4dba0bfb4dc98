#include "platform/linux/RecentForkAttributes.h"

#include <utility>

namespace tolvane::platform {

namespace {

constexpr auto rememberedFor = std::chrono::milliseconds(10);

bool sameMoment(const Date& a, const Date& b) {
    return a.unixSeconds() == b.unixSeconds() && a.nanoseconds() == b.nanoseconds();
}

} // namespace

RecentForkAttributes::RecentForkAttributes(Lister lister, Clock clock)
    : lister_(std::move(lister))
    , clock_(std::move(clock)) {}

ForkAttributes RecentForkAttributes::ofItem(const std::string& path, const ItemStatus& status) {
    if (!last_ || !stillCounts(*last_, status)) {
        // The time is taken before the list, so that no change after it can pass for one before.
        const auto taken = clock_();
        last_ = Look{status.device, status.fileNumber, status.changeDate, taken, lister_(path)};
    }
    return last_->found;
}

bool RecentForkAttributes::stillCounts(const Look& look, const ItemStatus& status) const {
    return look.device == status.device && look.fileNumber == status.fileNumber
           && sameMoment(look.changed, status.changeDate) && clock_() - look.taken < rememberedFor;
}

} // namespace tolvane::platform
