#include "platform/linux/bookmarks/KnownFolders.h"

#include <algorithm>
#include <utility>

namespace tolvane::platform {

// Threads work on names that are near each other, so a few folders are in use at a time.
constexpr std::size_t mostKept = 16;
constexpr auto keptFor = std::chrono::seconds(1);

std::shared_ptr<const KnownFolder> KnownFolders::at(std::string_view folder) {
    const std::lock_guard lock(mutex_);
    const auto place = std::ranges::find(
        kept_, folder, [](const Kept& kept) { return std::string_view(kept.look->folder); });
    return place != kept_.end() && clock_() - place->since < keptFor ? place->look : nullptr;
}

void KnownFolders::keep(KnownFolder look) {
    const std::lock_guard lock(mutex_);
    std::erase_if(kept_, [&look](const Kept& kept) { return kept.look->folder == look.folder; });
    if (kept_.size() == mostKept) {
        kept_.erase(kept_.begin());
    }
    kept_.push_back({std::make_shared<const KnownFolder>(std::move(look)), clock_()});
}

} // namespace tolvane::platform
