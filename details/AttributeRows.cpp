#include "details/AttributeRows.h"

#include "attributes/Answer.h"

#include <algorithm>
#include <span>
#include <utility>

namespace tolvane::details {

using attributes::Certainty;
using attributes::Explanation;

namespace {

std::string titleAndMark(const Explanation& explanation) {
    const bool isMarked =
        explanation.certainty == Certainty::guess || explanation.certainty == Certainty::opaque;
    return explanation.title
           + (isMarked ? " (" + std::string(nameOf(explanation.certainty)) + ")" : std::string());
}

/// The sentence, the notes and the fields, which may be many.
std::string bodyOf(const Explanation& explanation) {
    std::string text = explanation.summary + "\n";
    for (const std::string& note : explanation.notes) {
        text.append("Note: ").append(note).append("\n");
    }
    text += "\n";
    for (const attributes::Field& field : explanation.fields) {
        text.append(field.name).append(": ").append(field.text).append("\n");
    }
    return text;
}

std::string fileNameIn(const std::string& path) {
    return attributes::visibleText(path.substr(path.rfind('/') + 1));
}

} // namespace

AttributeRows::AttributeRows(
    const platform::URL& url, const platform::Dictionary& attributes, const ExplanationSources& sources)
    : stored_(storedAttributes(url, attributes, sources))
    , questions_(questionsAbout(attributes, sources))
    , facts_(explainFactsOf(url, stored_, sources))
    , companion_(storedCompanion(url, attributes, sources, stored_.failures)) {
    for (const StoredAttribute& attribute : stored_.attributes) {
        if (auto checksum = attributes::storedChecksum(attribute.name, attribute.value)) {
            checksums_.push_back(*std::move(checksum));
        }
    }
    addRows(Kind::attribute, stored_.attributes.size());
    addRows(Kind::facts, facts_ ? 1 : 0);
    addRows(Kind::checksums, checksums_.empty() ? 0 : 1);
    if (companion_) {
        addRows(Kind::heading, 1);
        addRows(Kind::companion, companion_->attributes.size());
    }
    addRows(Kind::failures, stored_.failures.empty() ? 0 : 1);
}

void AttributeRows::addRows(Kind kind, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        rows_.push_back({kind, i});
    }
}

const std::vector<platform::TableColumn>& AttributeRows::columns() const {
    static const std::vector<platform::TableColumn> columns{
        {.title = "Attribute", .width = 20}, {.title = "Name", .width = 28}};
    return columns;
}

std::string AttributeRows::text(std::size_t row, std::size_t column) const {
    const Row& shown = rows_.at(row);
    if (column == 0) {
        return titleOf(shown);
    }
    if (shown.kind == Kind::heading) {
        return companion_->path.substr(companion_->path.rfind('/') + 1);
    }
    const StoredAttribute* const attribute = attributeAt(shown);
    return attribute != nullptr ? attribute->name : std::string();
}

bool AttributeRows::isMarked(std::size_t row, std::size_t /*column*/) const {
    const Kind kind = rows_.at(row).kind;
    return kind == Kind::heading || kind == Kind::failures;
}

const StoredAttribute* AttributeRows::attributeAt(const Row& row) const {
    return row.kind == Kind::attribute   ? &stored_.attributes.at(row.index)
           : row.kind == Kind::companion ? &companion_->attributes.at(row.index)
                                         : nullptr;
}

Explanation AttributeRows::explanationOf(const Row& row) const {
    const StoredAttribute& attribute = *attributeAt(row);
    return attributes::explain(
        attribute.name, attribute.value, row.kind == Kind::companion ? companion_->questions : questions_);
}

std::string AttributeRows::titleOf(const Row& row) const {
    switch (row.kind) {
    case Kind::attribute:
    case Kind::companion:
        return titleAndMark(explanationOf(row));
    case Kind::facts:
        return facts_->words.title;
    case Kind::checksums:
        return "Checksums and the content";
    case Kind::heading:
        return "In the companion file:";
    case Kind::failures:
        return "What could not be read";
    }
    return {};
}

std::string AttributeRows::words(std::size_t row) const {
    const Row& shown = rows_.at(row);
    switch (shown.kind) {
    case Kind::attribute:
    case Kind::companion: {
        const Explanation explanation = explanationOf(shown);
        std::string text =
            titleAndMark(explanation) + "\n" + attributes::visibleText(explanation.name) + "\n\n";
        if (shown.kind == Kind::companion) {
            text += "In the companion file " + fileNameIn(companion_->path) + ".\n";
        } else if (stored_.areOfLink) {
            text += "The target of this link cannot be reached; this is an attribute of the link itself.\n";
        }
        return text + bodyOf(explanation);
    }
    case Kind::facts:
        return titleOf(shown) + "\n\n" + factsText();
    case Kind::checksums:
        return titleOf(shown) + "\n\n";
    case Kind::heading:
        return "The attributes below are stored in another file beside this item:\n"
               + attributes::visibleText(companion_->path) + "\n";
    case Kind::failures: {
        std::string text = titleOf(shown) + "\n\n";
        for (const std::string& failure : stored_.failures) {
            text += attributes::visibleText(failure) + "\n";
        }
        return text;
    }
    }
    return {};
}

std::string AttributeRows::factsText() const {
    std::string text;
    for (const auto& cells : facts_->cells) {
        for (const std::string& cell : cells) {
            text += cell + "\t";
        }
        text.back() = '\n';
    }
    return text + "\n" + bodyOf(facts_->words);
}

std::string AttributeRows::bytes(std::size_t row) const {
    const StoredAttribute* const attribute = attributeAt(rows_.at(row));
    if (attribute == nullptr) {
        return {};
    }
    constexpr std::size_t perLine = 16;
    const std::span<const std::byte> value(attribute->value);
    std::string text = "\n" + std::to_string(value.size()) + (value.size() == 1 ? " byte\n" : " bytes\n");
    for (std::size_t start = 0; start < value.size(); start += perLine) {
        const auto line = value.subspan(start, std::min(perLine, value.size() - start));
        text += attributes::hexNumber(start, 4).substr(2) + "\t" + attributes::hexDigits(line) + "\t";
        for (const std::byte byte : line) {
            const char c = static_cast<char>(byte);
            text += c >= ' ' && c <= '~' ? c : '.';
        }
        text += "\n";
    }
    return text;
}

std::optional<std::size_t> AttributeRows::checksumsRow() const {
    const auto row = std::ranges::find(rows_, Kind::checksums, &Row::kind);
    return row == rows_.end() ? std::nullopt : std::optional(static_cast<std::size_t>(row - rows_.begin()));
}

} // namespace tolvane::details
