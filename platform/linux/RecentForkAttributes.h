// Remembers for a moment which fork attributes an item has, because the facts of one item are asked for in
// several requests and each would list its attributes again.
//
// What is remembered counts for the same item in the same state only (device, file number and time of last
// change, which setting or removing an attribute moves on), and no longer than a few milliseconds, since two
// changes within one tick of the file system's clock leave the same time.
#pragma once

#include "platform/linux/ForkAttributes.h"
#include "platform/linux/ItemStatus.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace tolvane::platform {

class RecentForkAttributes {
public:
    using Lister = std::function<ForkAttributes(const std::string& path)>;
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// Another lister and another clock are for tests.
    explicit RecentForkAttributes(
        Lister lister = forkAttributesOfItem, Clock clock = std::chrono::steady_clock::now);

    /// The attributes of the item at the path, whose status was looked at just now.
    ForkAttributes ofItem(const std::string& path, const ItemStatus& status);

private:
    struct Look {
        std::uint64_t device;
        std::uint64_t fileNumber;
        Date changed;
        std::chrono::steady_clock::time_point taken;
        ForkAttributes found;
    };

    bool stillCounts(const Look& look, const ItemStatus& status) const;

    Lister lister_;
    Clock clock_;
    std::optional<Look> last_;
};

} // namespace tolvane::platform
