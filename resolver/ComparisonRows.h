#pragma once

#include "platform/model/Table.h"
#include "platform/services/Bookmarks.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::resolver {

/// Compared facts as rows: the fact, whether stored and found differ, and both values. Rows that differ say
/// so in words and are marked.
class ComparisonRows final : public platform::TableRows {
public:
    explicit ComparisonRows(std::vector<platform::ComparedFact> facts) : facts_(std::move(facts)) {}

    const std::vector<platform::TableColumn>& columns() const override;
    std::size_t rowCount() const override { return facts_.size(); }
    std::string text(std::size_t row, std::size_t column) const override;
    bool isMarked(std::size_t row, std::size_t column) const override;

private:
    std::vector<platform::ComparedFact> facts_;
};

} // namespace tolvane::resolver
