// Explains any bytes under any name, which a NUL ends, and as a companion file.
#include "attributes/Companion.h"
#include "fuzz/ExplainedValue.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    std::string_view rest = fuzz::textOf(data, size);
    const std::string_view name = fuzz::takeUntilNul(rest);
    const auto value = std::as_bytes(std::span(rest));
    fuzz::explainAndRequire(name, value);
    if (const auto companion = attributes::companionAttributes(value)) {
        for (const attributes::CompanionAttribute& attribute : companion->attributes) {
            fuzz::explainAndRequire(attribute.name, attribute.value);
        }
    }
    return 0;
}
