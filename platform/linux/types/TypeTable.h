#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The types that a system declares: their extensions, and the types they conform to.
///
/// Loading is cheap (one pass, nothing is copied), since a command-line program loads the table for one
/// question. Identifiers and extensions are accepted in any case; identifiers are returned as the table
/// spells them.
///
/// A type that conforms to public.directory, directly or not, is of the directory kind, any other of the data
/// kind. An extension may belong to one of each: "key" differs between folders and files.
namespace tolvane::platform {

/// One line of the table. The last three hold lists with commas between the entries, see splitList.
struct TypeDeclaration {
    std::string_view identifier;
    std::string_view extensions;
    std::string_view mimeTypes;
    std::string_view parents;
};

/// The entries of a list cell, as views into it. An empty cell has none.
std::vector<std::string_view> splitList(std::string_view cell);

enum class TypeKind { data, directory };

struct TypeTableFault {
    std::size_t line = 0; ///< counted from 1, the header is line 1
    std::string what;     ///< a sentence fragment in English, for a diagnostic line
};

class TypeTable {
public:
    /// The table and its results are views into the text, which must outlive both; declaredTypesText does. A
    /// missing header, and a line without four cells or identifier, are faults. Of lines with one identifier
    /// the first counts.
    static std::expected<TypeTable, TypeTableFault> parse(std::string_view text);

    /// A table without types, for when no other is available.
    static TypeTable withoutDeclarations() { return TypeTable(); }

    /// In the order of the text.
    std::span<const TypeDeclaration> declarations() const { return declarations_; }

    /// The identifier in the table's spelling, or nothing when no line declares it.
    std::optional<std::string_view> declaredIdentifier(std::string_view identifier) const;

    /// The extension has no dot. Nothing if no type of this kind declares it, or it is not UTF-8.
    std::optional<std::string_view> typeForExtension(std::string_view extension, TypeKind kind) const;

    /// The type, then everything it conforms to, nearest first, without repetitions; empty if undeclared. A
    /// parent without a line is included.
    std::vector<std::string_view> closure(std::string_view identifier) const;

    /// True also for the type itself; false when it is not declared.
    bool conforms(std::string_view identifier, std::string_view ancestor) const;

private:
    /// Finds lines by name, ignoring ASCII case; several lines may share one.
    class NameIndex {
    public:
        struct Entry {
            std::string_view name;
            std::uint32_t line = 0; ///< position in declarations_
        };

        NameIndex() = default;
        explicit NameIndex(std::vector<Entry> entries);

        /// The first entry in the order of the text that has the name and is accepted, or null.
        const Entry* find(std::string_view name, const auto& accept) const;

    private:
        std::vector<Entry> entries_;
        std::vector<std::uint32_t>
            slots_; ///< a power of two of them: 0 when free, else entry position plus 1
    };

    TypeTable() = default;

    const TypeDeclaration* declarationOf(std::string_view identifier) const;

    std::vector<TypeDeclaration> declarations_;
    NameIndex identifiers_;
    NameIndex extensions_;
};

} // namespace tolvane::platform
