#include "resolver/ComparisonRows.h"

#include "resolver/StoredAndFound.h"

namespace tolvane::resolver {

const std::vector<platform::TableColumn>& ComparisonRows::columns() const {
    static const std::vector<platform::TableColumn> columns{
        {"Fact", 14, false}, {"Agreement", 12, false}, {"As stored", 29, false}, {"As found", 29, false}};
    return columns;
}

std::string ComparisonRows::text(std::size_t row, std::size_t column) const {
    const platform::ComparedFact& fact = facts_.at(row);
    switch (column) {
    case 0:
        return factTitle(fact.name);
    case 1:
        return std::string(agreementText(fact));
    case 2:
        return factText(fact.name, fact.stored);
    default:
        return factText(fact.name, fact.found);
    }
}

bool ComparisonRows::isMarked(std::size_t row, std::size_t column) const {
    return column > 0 && facts_.at(row).differs == true;
}

} // namespace tolvane::resolver
