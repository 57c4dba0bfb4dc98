// The parts of a report that take time besides the system's.
#include "details/Report.h"
#include "platform/linux/types/DeclaredTypesText.h"
#include "platform/linux/types/TypeIdentifier.h"
#include "platform/linux/types/TypeTable.h"
#include "platform/values/Description.h"
#include "platform/values/Value.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tolvane::bench {
namespace {

void parsingTheTypeTable(benchmark::State& state) {
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(platform::TypeTable::parse(platform::declaredTypesText));
    }
}
BENCHMARK(parsingTheTypeTable);

void lookingUpTypeIdentifiers(benchmark::State& state) {
    const auto table = platform::TypeTable::parse(platform::declaredTypesText);
    if (!table) {
        state.SkipWithError("the declared types cannot be read");
        return;
    }
    constexpr std::array<std::string_view, 4> names{"notes.txt", "archive.tar.gz", "plain", "file.unheardOf"};
    while (state.KeepRunning()) {
        for (const auto name : names) {
            const platform::ItemFacts facts{platform::ItemKind::regularFile, false, false, name, {}};
            benchmark::DoNotOptimize(platform::typeIdentifier(facts, *table));
        }
    }
    state.SetItemsProcessed(state.iterations() * std::ssize(names));
}
BENCHMARK(lookingUpTypeIdentifiers);

// By the number of attributes, of 256 bytes each.
void describingAttributes(benchmark::State& state) {
    platform::Dictionary attributes;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        attributes.set("user.attribute." + std::to_string(i), platform::Data(256, std::byte{0xA5}));
    }
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(platform::description(attributes));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(describingAttributes)->Arg(3)->Arg(100)->Arg(1000);

// By the length of the extended attributes' text.
void composingTheReport(benchmark::State& state) {
    details::ReportFields fields;
    fields.windowTitle = "notes.txt";
    fields.texts.pathTextbox = "/home/demo/documents/notes.txt";
    fields.texts.inodeText = std::string(static_cast<std::size_t>(state.range(0)), 'x');
    fields.date = "Friday, August 9, 2024 at 6:27:02 PM Coordinated Universal Time";
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(details::reportText(fields));
    }
}
BENCHMARK(composingTheReport)->Arg(200)->Arg(100'000);

} // namespace
} // namespace tolvane::bench
