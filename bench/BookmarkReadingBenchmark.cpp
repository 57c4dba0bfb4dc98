// Taking bookmarks apart: what it takes for an ordinary one, and how it grows with the length of those that
// nobody would make but to do harm. The growth is fitted to what was measured. It is meant to be linear, but
// for properties under names of their own, which are sorted.
#include "platform/bookmark/BookmarkComposer.h"
#include "platform/bookmark/BookmarkDescription.h"
#include "platform/bookmark/BookmarkHeader.h"
#include "platform/bookmark/BookmarkProperties.h"
#include "platform/bookmark/BookmarkReader.h"
#include "platform/bookmark/ByteAppending.h"
#include "platform/bookmark/SectionComposer.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::bench {
namespace {

using platform::Data;

Data bookmarkOfPath(std::vector<std::string> components) {
    platform::BookmarkContents contents;
    contents.fileIDs.emplace();
    for (std::size_t i = 0; i < components.size(); ++i) {
        contents.fileIDs->push_back(static_cast<std::int64_t>(5'308'416 + i));
    }
    contents.pathComponents = std::move(components);
    contents.creationDate = platform::Date(700'000'000.5);
    contents.fileFlags = platform::BookmarkFlags{1, 15, 0};
    contents.volume.path = "/";
    contents.volume.url = "file:///";
    contents.volume.name = "Test Disk";
    contents.volume.uuid = "0A81F3B1-51D9-3335-B3E3-169C3640360D";
    contents.volume.capacity = 494'384'795'648;
    contents.volume.creationDate = platform::Date(600'000'000);
    return platform::composeBookmark(contents).value_or(Data());
}

Data bookmarkOf(platform::SectionComposer& composer, std::vector<platform::BookmarkItem> items) {
    const Data section =
        composer.take(composer.addTable(platform::table_identifier::target, 0, std::move(items)));
    Data bytes;
    platform::appendBookmarkHeader(bytes, platform::BookmarkHeader(), section.size());
    platform::appendBytes(bytes, section);
    return bytes;
}

Data withComponents(std::size_t count) {
    std::vector<std::string> components;
    components.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        components.push_back("component " + std::to_string(i));
    }
    return bookmarkOfPath(std::move(components));
}

/// Values that callers stored under names of their own.
Data withItems(std::size_t count) {
    platform::SectionComposer composer;
    std::vector<platform::BookmarkItem> items;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t name = composer.addString("name " + std::to_string(i));
        const std::uint32_t value = composer.addString("value " + std::to_string(i));
        items.push_back({platform::bookmark_key::namedBit | name, value, 0});
    }
    return bookmarkOf(composer, std::move(items));
}

/// One text in every place of an array. Whatever writes the values out writes more than was read.
Data withSharedValues(std::size_t count) {
    platform::SectionComposer composer;
    const std::uint32_t name = composer.addString("shared");
    const std::vector<std::uint32_t> elements(count, composer.addString("one text for all"));
    const std::uint32_t array = composer.addArray(elements);
    return bookmarkOf(composer, {{platform::bookmark_key::namedBit | name, array, 0}});
}

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

// By the number of components, items or elements; the fit is by the number of bytes.
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
