// Making bookmarks of local files. Most of the time is the system's: each step of the path is examined twice.
#include "bench/Files.h"
#include "platform/bookmark/format/BookmarkComposer.h"
#include "platform/linux/bookmarks/BookmarkMaker.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>

namespace tolvane::bench {
namespace {

struct Maker {
    platform::Result<platform::Data> bookmarkData(const platform::URL& url) {
        return platform::BookmarkMaker(mounts, volumes, account, knownFolders).bookmarkData(url);
    }

    platform::CurrentMounts mounts;
    platform::VolumeFacts volumes;
    platform::OwnAccount account;
    platform::KnownFolders knownFolders;
};

// A thousand files, as in a report on a tree.
void makingBookmarks(benchmark::State& state) {
    constexpr std::size_t most = 1'000;
    const auto urls = filesBelow(folderOfFiles(), most);
    if (urls.empty()) {
        state.SkipWithError("there are no files");
        return;
    }
    Maker maker;
    for (const auto& url : urls) {
        if (!maker.bookmarkData(url)) {
            state.SkipWithError("a bookmark cannot be made");
            return;
        }
    }
    while (state.KeepRunning()) {
        for (const auto& url : urls) {
            benchmark::DoNotOptimize(maker.bookmarkData(url));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(urls.size()));
}
BENCHMARK(makingBookmarks);

// By the number of folders above the item.
void makingABookmarkFarDown(benchmark::State& state) {
    const std::filesystem::path top = std::filesystem::temp_directory_path() / "tolvane-bench-deep";
    std::filesystem::path folder = top;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        folder /= "d";
    }
    std::error_code fault;
    std::filesystem::create_directories(folder, fault);
    const auto url = platform::URL::fileURLWithPath(folder.string());
    Maker maker;
    if (!maker.bookmarkData(url)) {
        state.SkipWithError("a bookmark cannot be made");
    }
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(maker.bookmarkData(url));
    }
    std::filesystem::remove_all(top, fault);
}
BENCHMARK(makingABookmarkFarDown)->Arg(1)->Arg(10)->Arg(100);

void composingABookmark(benchmark::State& state) {
    Maker maker;
    const auto contents =
        platform::BookmarkMaker(maker.mounts, maker.volumes, maker.account, maker.knownFolders)
            .contents(platform::URL::fileURLWithPath("/dev/null"));
    if (!contents) {
        state.SkipWithError("a bookmark cannot be made");
        return;
    }
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(platform::composeBookmark(*contents));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(composingABookmark);

} // namespace
} // namespace tolvane::bench
