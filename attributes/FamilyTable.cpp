#include "attributes/FamilyTables.h"

#include <array>

namespace tolvane::attributes {

const Family* familyNamed(std::string_view name) {
    const Family* longest = nullptr;
    const std::array tables{
        desktopFamilies(), linuxFamilies(), clusterFamilies(), windowsFamilies(), macFamilies()};
    for (const std::span<const Family> table : tables) {
        for (const Family& family : table) {
            if (family.name == name) {
                return &family;
            }
            if (family.name.ends_with('*') && name.starts_with(family.name.substr(0, family.name.size() - 1))
                && (longest == nullptr || family.name.size() > longest->name.size())) {
                longest = &family;
            }
        }
    }
    return longest;
}

} // namespace tolvane::attributes
