// Parsing bookmarks: the time for an ordinary one, and its growth with the length of malicious ones, fitted
// to the measurements. It should be linear, except for properties under names of their own, which are sorted.
#include "bench/Bookmarks.h"
#include "platform/bookmark/description/BookmarkDescription.h"
#include "platform/bookmark/description/BookmarkProperties.h"
#include "platform/bookmark/format/BookmarkReader.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>

namespace tolvane::bench {
namespace {

using platform::Data;

void setAmounts(benchmark::State& state, const Data& bytes) {
    const auto length = static_cast<std::int64_t>(bytes.size());
    state.SetItemsProcessed(state.iterations());
    state.SetBytesProcessed(state.iterations() * length);
    state.SetComplexityN(length);
}

void read(benchmark::State& state, const Data& bytes) {
    if (!platform::readBookmark(bytes)) {
        state.SkipWithError("the bookmark cannot be read");
        return;
    }
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(platform::readBookmark(bytes));
    }
    setAmounts(state, bytes);
}

void readAndDescribe(benchmark::State& state, const Data& bytes) {
    if (!platform::readBookmark(bytes)) {
        state.SkipWithError("the bookmark cannot be read");
        return;
    }
    while (state.KeepRunning()) {
        const auto structure = platform::readBookmark(bytes);
        benchmark::DoNotOptimize(platform::bookmarkProperties(*structure));
        benchmark::DoNotOptimize(platform::bookmarkDetailedDescription(*structure));
    }
    setAmounts(state, bytes);
}

void readingABookmark(benchmark::State& state) {
    read(state, bookmarkOfPath({"Users", "demo", "Documents", "notes.txt"}));
}
BENCHMARK(readingABookmark);

void describingABookmark(benchmark::State& state) {
    readAndDescribe(state, bookmarkOfPath({"Users", "demo", "Documents", "notes.txt"}));
}
BENCHMARK(describingABookmark);

using Make = Data (*)(std::size_t);

// By the number of components, items or elements; fitted by the number of bytes.
void readingLongOnes(benchmark::State& state, Make make) {
    read(state, make(static_cast<std::size_t>(state.range(0))));
}

void describingLongOnes(benchmark::State& state, Make make) {
    readAndDescribe(state, make(static_cast<std::size_t>(state.range(0))));
}

void lengths(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(10, 100'000)->Complexity();
}

BENCHMARK_CAPTURE(readingLongOnes, components, withComponents)->Apply(lengths);
BENCHMARK_CAPTURE(readingLongOnes, items, withItems)->Apply(lengths);
BENCHMARK_CAPTURE(readingLongOnes, sharedValues, withSharedValues)->Apply(lengths);
BENCHMARK_CAPTURE(describingLongOnes, components, withComponents)->Apply(lengths);
BENCHMARK_CAPTURE(describingLongOnes, items, withItems)->Apply(lengths);
BENCHMARK_CAPTURE(describingLongOnes, sharedValues, withSharedValues)->Apply(lengths);

} // namespace
} // namespace tolvane::bench
