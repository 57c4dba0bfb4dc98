#include "platform/bookmark/resolution/LocalTime.h"

#include <cstdint>

namespace tolvane::platform {

bool isLocalTimeOf(const Date& local, const Date& moment) {
    constexpr std::int64_t quarterOfAnHour = std::int64_t{15} * 60;
    constexpr std::int64_t farthestBehind = std::int64_t{-12} * 60 * 60;
    constexpr std::int64_t farthestAhead = std::int64_t{14} * 60 * 60;
    // Either may have any number of seconds.
    std::int64_t ahead = 0;
    return !__builtin_sub_overflow(local.unixSeconds(), moment.unixSeconds(), &ahead)
           && ahead >= farthestBehind && ahead <= farthestAhead && ahead % quarterOfAnHour == 0;
}

} // namespace tolvane::platform
