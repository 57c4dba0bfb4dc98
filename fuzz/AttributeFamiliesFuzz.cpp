// Explains any bytes as a value of one family after the other: that of the name before the first NUL, or
// where there is none of this name, one that the name's letters choose.
#include "attributes/FamilyTables.h"
#include "fuzz/ExplainedValue.h"

#include <array>
#include <numeric>
#include <string>

namespace {

using namespace tolvane;

/// A name of the family: where it is the beginning of many, one of them.
std::string nameIn(std::string_view letters) {
    if (attributes::familyNamed(letters) != nullptr) {
        return std::string(letters);
    }
    std::size_t index =
        std::accumulate(letters.begin(), letters.end(), std::size_t{0}, [](std::size_t sum, char c) {
            return sum + static_cast<unsigned char>(c);
        });
    const std::array tables{
        attributes::desktopFamilies(), attributes::linuxFamilies(), attributes::clusterFamilies(),
        attributes::windowsFamilies(), attributes::macFamilies()};
    std::size_t count = 0;
    for (const auto& table : tables) {
        count += table.size();
    }
    index %= count;
    for (const auto& table : tables) {
        if (index < table.size()) {
            std::string name(table[index].name);
            if (name.ends_with('*')) {
                name.back() = 'x';
            }
            return name;
        }
        index -= table.size();
    }
    return {};
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest = fuzz::textOf(data, size);
    const std::string name = nameIn(fuzz::takeUntilNul(rest));
    fuzz::require(attributes::familyNamed(name) != nullptr, "every name of a family is known");
    fuzz::explainAndRequire(name, std::as_bytes(std::span(rest)));
    return 0;
}
