#include "resolver/FindingRows.h"

#include "containers/FindingTexts.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <numeric>

namespace tolvane::resolver {

using containers::Finding;

namespace {

constexpr std::size_t columnCount = static_cast<std::size_t>(FindingColumn::where) + 1;

FindingColumn columnAt(std::size_t index) {
    return static_cast<FindingColumn>(index);
}

char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string inLowerCase(std::string_view text) {
    std::string lower(text.size(), '\0');
    std::ranges::transform(text, lower.begin(), lowerCase);
    return lower;
}

/// Puts findings without a date first.
double secondsOf(const Finding& finding) {
    const auto& date = finding.createdLocal ? finding.createdLocal : finding.created;
    return date ? date->timeIntervalSinceReferenceDate() : -std::numeric_limits<double>::infinity();
}

/// Equal keys stay in the container's order.
template <typename Key>
void sortByKeys(std::vector<std::size_t>& findings, const std::vector<Key>& keys, bool isAscending) {
    std::ranges::sort(findings, [&keys, isAscending](std::size_t a, std::size_t b) {
        return keys[a] == keys[b] ? a < b : (keys[a] < keys[b]) == isAscending;
    });
}

} // namespace

FindingRows::FindingRows(std::vector<Finding> findings)
    : findings_(std::move(findings))
    , outcomes_(findings_.size()) {
    arrange();
}

const std::vector<platform::TableColumn>& FindingRows::columns() const {
    static const std::vector<platform::TableColumn> columns{
        {"Number", 8, true},
        {"Kind", 9, false},
        {"Path or URL", 32, false},
        {"Agreement", 10, false},
        {"Beside it", 32, false},
        {"Leads to", 32, false},
        {"Name", 18, false},
        {"Volume", 14, false},
        {"Created", 25, false},
        {"Flags", 20, false},
        {"Where in the file", 30, false}};
    return columns;
}

std::string FindingRows::text(std::size_t row, std::size_t column) const {
    return textOf(shown_.at(row), columnAt(column));
}

bool FindingRows::isMarked(std::size_t row, std::size_t column) const {
    const std::size_t finding = shown_.at(row);
    switch (columnAt(column)) {
    case FindingColumn::target:
        return !findings_[finding].isReadable;
    case FindingColumn::neighbour:
    case FindingColumn::agreement:
        return findings_[finding].mismatch == true;
    case FindingColumn::outcome:
        return outcomes_[finding] && !outcomes_[finding]->isFound;
    default:
        return false;
    }
}

std::optional<std::size_t> FindingRows::rowOf(std::size_t finding) const {
    const auto place = std::ranges::find(shown_, finding);
    return place == shown_.end() ? std::nullopt
                                 : std::optional(static_cast<std::size_t>(place - shown_.begin()));
}

void FindingRows::sort(platform::TableOrder order) {
    order_ = order;
    arrange();
}

void FindingRows::filter(std::string_view text) {
    filter_ = inLowerCase(text);
    arrange();
}

const FindingOutcome* FindingRows::outcomeOf(std::size_t finding) const {
    const auto& outcome = outcomes_.at(finding);
    return outcome ? &*outcome : nullptr;
}

void FindingRows::setOutcome(std::size_t finding, FindingOutcome outcome) {
    outcomes_.at(finding) = std::move(outcome);
}

std::string FindingRows::textOf(std::size_t index, FindingColumn column) const {
    const Finding& finding = findings_[index];
    switch (column) {
    case FindingColumn::number:
        return std::to_string(index);
    case FindingColumn::kind:
        return std::string(containers::findingKindName(finding.kind));
    case FindingColumn::where:
        return finding.where;
    case FindingColumn::target:
        return containers::targetText(finding);
    case FindingColumn::volume:
        return containers::volumeText(finding);
    case FindingColumn::created:
        return containers::createdText(finding);
    case FindingColumn::flags:
        return containers::flagsText(finding);
    case FindingColumn::name:
        return finding.name.value_or("");
    case FindingColumn::neighbour:
        return finding.neighbour.value_or("");
    case FindingColumn::agreement:
        return finding.mismatch ? (*finding.mismatch ? "differs" : "agrees") : "";
    case FindingColumn::outcome:
        break;
    }
    const auto& outcome = outcomes_[index];
    return outcome ? (outcome->isStale ? "stale: " : "") + outcome->text : "";
}

bool FindingRows::matches(std::size_t finding) const {
    for (std::size_t column = 0; column < columnCount; ++column) {
        if (inLowerCase(textOf(finding, columnAt(column))).find(filter_) != std::string::npos) {
            return true;
        }
    }
    return false;
}

void FindingRows::arrange() {
    shown_.resize(findings_.size());
    std::iota(shown_.begin(), shown_.end(), std::size_t{0});
    const FindingColumn column = columnAt(order_.column);
    if (column == FindingColumn::number) {
        if (!order_.isAscending) {
            std::ranges::reverse(shown_);
        }
    } else if (column == FindingColumn::created) {
        std::vector<double> keys;
        std::ranges::transform(findings_, std::back_inserter(keys), secondsOf);
        sortByKeys(shown_, keys, order_.isAscending);
    } else {
        std::vector<std::string> keys;
        keys.reserve(findings_.size());
        for (std::size_t i = 0; i < findings_.size(); ++i) {
            keys.push_back(textOf(i, column));
        }
        sortByKeys(shown_, keys, order_.isAscending);
    }
    if (!filter_.empty()) {
        std::erase_if(shown_, [this](std::size_t finding) { return !matches(finding); });
    }
}

} // namespace tolvane::resolver
