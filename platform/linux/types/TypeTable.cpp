#include "platform/linux/types/TypeTable.h"

#include "platform/linux/types/LowerCase.h"
#include "platform/values/Pieces.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

namespace tolvane::platform {

namespace {

constexpr std::string_view header = "identifier\textensions\tmime-types\tconforms-to";
constexpr std::size_t usualLineLength = 64; // only room is made by it
constexpr std::string_view directoryType = "public.directory";

std::optional<TypeDeclaration> readLine(std::string_view line) {
    std::array<std::string_view, 4> cells;
    std::size_t start = 0;
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        const auto end = line.find('\t', start);
        const bool isLast = cell + 1 == cells.size();
        if ((end == std::string_view::npos) != isLast) {
            return std::nullopt;
        }
        cells[cell] = line.substr(start, end - start);
        start = end + 1;
    }
    return TypeDeclaration{cells[0], cells[1], cells[2], cells[3]};
}

// Eight bytes at a time, for fast loading. Setting the case bit also makes a few other characters equal,
// which costs only a comparison.
std::size_t hashIgnoringAsciiCase(std::string_view name) {
    constexpr std::uint64_t caseBits = 0x2020202020202020;
    constexpr std::uint64_t oddFactor = 0x9E3779B97F4A7C15;
    std::uint64_t hash = name.size();
    while (!name.empty()) {
        std::uint64_t word = 0;
        const auto count = std::min(name.size(), sizeof word);
        std::memcpy(&word, name.data(), count);
        name.remove_prefix(count);
        hash = (std::rotl(hash, 29) ^ (word | caseBits)) * oddFactor;
    }
    return static_cast<std::size_t>(hash ^ (hash >> 32));
}

} // namespace

std::vector<std::string_view> splitList(std::string_view cell) {
    std::vector<std::string_view> entries;
    while (!cell.empty()) {
        entries.push_back(takeUntil(',', cell));
    }
    return entries;
}

TypeTable::NameIndex::NameIndex(std::vector<Entry> entries)
    : entries_(std::move(entries))
    , slots_(std::bit_ceil(entries_.size() * 2 + 1)) {
    for (std::uint32_t position = 0; position < entries_.size(); ++position) {
        auto slot = hashIgnoringAsciiCase(entries_[position].name) & (slots_.size() - 1);
        while (slots_[slot] != 0) {
            slot = (slot + 1) & (slots_.size() - 1);
        }
        slots_[slot] = position + 1;
    }
}

const TypeTable::NameIndex::Entry* TypeTable::NameIndex::find(
    std::string_view name, const auto& accept) const {
    if (slots_.empty()) {
        return nullptr;
    }
    // At least half of the slots are free, so this ends; entries of one name are met in order.
    auto slot = hashIgnoringAsciiCase(name) & (slots_.size() - 1);
    for (; slots_[slot] != 0; slot = (slot + 1) & (slots_.size() - 1)) {
        const Entry& entry = entries_[slots_[slot] - 1];
        if (equalIgnoringAsciiCase(entry.name, name) && accept(entry)) {
            return &entry;
        }
    }
    return nullptr;
}

std::expected<TypeTable, TypeTableFault> TypeTable::parse(std::string_view text) {
    auto rest = text;
    if (takeUntil('\n', rest) != header) {
        return std::unexpected(
            TypeTableFault{1, text.empty() ? "the text is empty" : "not the expected header"});
    }
    TypeTable table;
    const auto lineCount = rest.size() / usualLineLength;
    table.declarations_.reserve(lineCount);
    std::vector<NameIndex::Entry> identifiers;
    identifiers.reserve(lineCount);
    std::vector<NameIndex::Entry> extensions;
    extensions.reserve(lineCount);
    for (std::size_t lineNumber = 2; !rest.empty(); ++lineNumber) {
        const auto line = takeUntil('\n', rest);
        const auto declaration = readLine(line);
        if (!declaration) {
            const auto cellCount = std::ranges::count(line, '\t') + 1;
            return std::unexpected(
                TypeTableFault{lineNumber, "4 cells expected, not " + std::to_string(cellCount)});
        }
        if (declaration->identifier.empty()) {
            return std::unexpected(TypeTableFault{lineNumber, "the identifier is empty"});
        }
        const auto position = static_cast<std::uint32_t>(table.declarations_.size());
        table.declarations_.push_back(*declaration);
        identifiers.push_back({declaration->identifier, position});
        for (auto list = declaration->extensions; !list.empty();) {
            extensions.push_back({takeUntil(',', list), position});
        }
    }
    table.identifiers_ = NameIndex(std::move(identifiers));
    table.extensions_ = NameIndex(std::move(extensions));
    return table;
}

const TypeDeclaration* TypeTable::declarationOf(std::string_view identifier) const {
    const auto* entry = identifiers_.find(identifier, [](const NameIndex::Entry&) { return true; });
    return entry == nullptr ? nullptr : &declarations_[entry->line];
}

std::optional<std::string_view> TypeTable::declaredIdentifier(std::string_view identifier) const {
    const auto* declaration = declarationOf(identifier);
    return declaration == nullptr ? std::nullopt : std::optional(declaration->identifier);
}

std::optional<std::string_view> TypeTable::typeForExtension(std::string_view extension, TypeKind kind) const {
    const auto lower = lowerCase(extension);
    if (!lower) {
        return std::nullopt;
    }
    const auto* entry = extensions_.find(*lower, [&](const NameIndex::Entry& candidate) {
        const bool isDirectoryKind = conforms(declarations_[candidate.line].identifier, directoryType);
        return isDirectoryKind == (kind == TypeKind::directory);
    });
    return entry == nullptr ? std::nullopt : std::optional(declarations_[entry->line].identifier);
}

std::vector<std::string_view> TypeTable::closure(std::string_view identifier) const {
    std::vector<std::string_view> reached;
    const auto reach = [&](std::string_view type) {
        const auto isType = [&](std::string_view known) { return equalIgnoringAsciiCase(known, type); };
        if (std::ranges::none_of(reached, isType)) {
            reached.push_back(declaredIdentifier(type).value_or(type));
        }
    };
    if (declarationOf(identifier) != nullptr) {
        reach(identifier);
    }
    // What was reached once is not gone through again, so types that conform to each other do no harm.
    for (std::size_t next = 0; next < reached.size(); ++next) {
        const auto* declaration = declarationOf(reached[next]);
        for (auto list = declaration == nullptr ? std::string_view() : declaration->parents; !list.empty();) {
            reach(takeUntil(',', list));
        }
    }
    return reached;
}

bool TypeTable::conforms(std::string_view identifier, std::string_view ancestor) const {
    return std::ranges::any_of(
        closure(identifier), [&](std::string_view type) { return equalIgnoringAsciiCase(type, ancestor); });
}

} // namespace tolvane::platform
