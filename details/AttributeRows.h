#pragma once

#include "attributes/StoredChecksum.h"
#include "details/ItemExplanations.h"
#include "platform/model/Table.h"
#include "platform/values/URL.h"
#include "platform/values/Value.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::details {

/// What extended attributes of one item mean, as rows of a table: one for each attribute, one for permissions
/// and status, one for the checksums if there are any, a heading and one for each attribute of the companion
/// file, and one for what could not be read. Attributes are explained when their rows are shown.
class AttributeRows final : public platform::TableRows {
public:
    /// Reads all of it. The sources outlive the rows.
    AttributeRows(
        const platform::URL& url, const platform::Dictionary& attributes, const ExplanationSources& sources);

    const std::vector<platform::TableColumn>& columns() const override;
    std::size_t rowCount() const override { return rows_.size(); }
    std::string text(std::size_t row, std::size_t column) const override;
    /// The heading and what could not be read.
    bool isMarked(std::size_t row, std::size_t column) const override;

    /// All that the row says, in lines; of the checksums only the title.
    std::string words(std::size_t row) const;

    /// To follow the words: the attribute's value, sixteen bytes in a line with the offset, hexadecimal
    /// digits and printable ASCII. Empty for other rows.
    std::string bytes(std::size_t row) const;

    /// In the item's own attributes.
    const std::vector<attributes::StoredChecksum>& checksums() const { return checksums_; }
    std::optional<std::size_t> checksumsRow() const;

private:
    enum class Kind { attribute, facts, checksums, heading, companion, failures };
    struct Row {
        Kind kind = Kind::facts;
        std::size_t index = 0; ///< Among the attributes of the item or of the companion file.
    };

    void addRows(Kind kind, std::size_t count);
    const StoredAttribute* attributeAt(const Row& row) const;
    attributes::Explanation explanationOf(const Row& row) const;
    std::string titleOf(const Row& row) const;
    std::string factsText() const;

    StoredAttributes stored_;
    attributes::Questions questions_;
    std::optional<attributes::StatusFactsInWords> facts_;
    std::optional<StoredCompanion> companion_;
    std::vector<attributes::StoredChecksum> checksums_;
    std::vector<Row> rows_;
};

} // namespace tolvane::details
