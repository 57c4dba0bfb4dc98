#pragma once

#include "containers/Finding.h"
#include "platform/model/Table.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::resolver {

/// What resolving a finding gave.
struct FindingOutcome {
    bool isFound = false;
    bool isStale = false; ///< Found, but not as the bookmark stores it.
    std::string text;     ///< The path, otherwise why there is none.
};

/// The columns of a table of findings, in their order.
enum class FindingColumn {
    number, ///< The index in the container, from zero, as in the terminal.
    kind,
    target,
    agreement, ///< Whether the neighbour names the same item.
    neighbour,
    outcome,
    name,
    volume,
    created,
    flags,
    where,
};

/// The findings of a container as rows, in any order and filtered. Nothing is made per row before it is
/// shown.
class FindingRows final : public platform::TableRows {
public:
    explicit FindingRows(std::vector<containers::Finding> findings);

    const std::vector<platform::TableColumn>& columns() const override;
    std::size_t rowCount() const override { return shown_.size(); }
    std::string text(std::size_t row, std::size_t column) const override;
    /// What does not agree with its neighbour, or was not found, is marked.
    bool isMarked(std::size_t row, std::size_t column) const override;

    /// In the container's order.
    const std::vector<containers::Finding>& findings() const { return findings_; }

    /// The index of the finding in a row.
    std::size_t findingAt(std::size_t row) const { return shown_.at(row); }

    /// The row of a finding; nothing if it is filtered out.
    std::optional<std::size_t> rowOf(std::size_t finding) const;

    /// Orders by the column's texts, byte by byte; numbers and dates by their value. Equal ones stay in the
    /// container's order, ascending or not.
    void sort(platform::TableOrder order);

    /// Shows only findings of which a column's text contains this; case does not count in ASCII. An empty
    /// text shows all.
    void filter(std::string_view text);

    /// Null if the finding was not resolved.
    const FindingOutcome* outcomeOf(std::size_t finding) const;
    /// Order and filter are not applied again.
    void setOutcome(std::size_t finding, FindingOutcome outcome);

private:
    std::string textOf(std::size_t finding, FindingColumn column) const;
    bool matches(std::size_t finding) const;
    void arrange();

    std::vector<containers::Finding> findings_;
    std::vector<std::optional<FindingOutcome>> outcomes_;
    std::vector<std::size_t> shown_;
    platform::TableOrder order_;
    std::string filter_; ///< In lower case.
};

} // namespace tolvane::resolver
