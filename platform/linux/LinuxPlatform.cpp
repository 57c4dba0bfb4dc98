#include "platform/linux/LinuxPlatform.h"

#include "platform/linux/types/DeclaredTypesText.h"

namespace tolvane::platform {

TypeTable declaredTypes(const std::function<void(const std::string& sentence)>& complain) {
    auto table = TypeTable::parse(declaredTypesText);
    if (table) {
        return *std::move(table);
    }
    complain("type table, line " + std::to_string(table.error().line) + ": " + table.error().what);
    return TypeTable::withoutDeclarations();
}

} // namespace tolvane::platform
