#pragma once

#include "platform/model/Table.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tolvane::tests {

/// Numbered rows whose second column is text; counts how many cells are made.
class CountedRows final : public platform::TableRows {
public:
    const std::vector<platform::TableColumn>& columns() const override {
        static const std::vector<platform::TableColumn> columns{{"Number", 8, true}, {"Text", 20, false}};
        return columns;
    }
    std::size_t rowCount() const override { return count; }
    std::string text(std::size_t row, std::size_t column) const override {
        ++made;
        return column == 0 ? std::to_string(row) : cell;
    }
    bool isMarked(std::size_t row, std::size_t /*column*/) const override { return row == 1; }

    std::size_t count = 0;
    std::string cell = "text";
    mutable std::size_t made = 0;
};

} // namespace tolvane::tests
