// Resolving bookmarks of local files that have not moved. bench/sections/bookmarks measures finding moved
// ones.
#include "bench/Files.h"
#include "platform/linux/bookmarks/LinuxBookmarks.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tolvane::bench {
namespace {

bool leadsTo(const platform::LinuxBookmarks& bookmarks, const platform::Data& bookmark) {
    const auto found = bookmarks.URLByResolvingBookmarkData(bookmark);
    return found && found->url && !found->isStale;
}

// Some hundred files, as in a report on a tree.
void resolvingBookmarks(benchmark::State& state) {
    constexpr std::size_t most = 500;
    const platform::LinuxBookmarks bookmarks;
    std::vector<platform::Data> made;
    for (const auto& url : filesBelow(folderOfFiles(), most)) {
        auto bookmark = bookmarks.bookmarkData(url);
        if (!bookmark || !leadsTo(bookmarks, *bookmark)) {
            state.SkipWithError("a bookmark cannot be made, or does not lead back");
            return;
        }
        made.push_back(*std::move(bookmark));
    }
    if (made.empty()) {
        state.SkipWithError("there are no files");
        return;
    }
    while (state.KeepRunning()) {
        for (const auto& bookmark : made) {
            benchmark::DoNotOptimize(bookmarks.URLByResolvingBookmarkData(bookmark));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(made.size()));
}
BENCHMARK(resolvingBookmarks);

} // namespace
} // namespace tolvane::bench
