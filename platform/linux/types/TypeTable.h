#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The types that a system declares: which extensions belong to them and which types they conform to.
///
/// A table promises cheap loading (one pass over the text, nothing of it copied) because a command-line
/// program loads it for a single question. It answers every identifier in the spelling that the table uses,
/// and takes identifiers and extensions in any case.
///
/// A type is of the directory kind when it conforms, directly or through others, to public.directory; every
/// other type is of the data kind. One extension may belong to a type of each kind: "key" means one thing on
/// a folder and another on a file.
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
    /// The table keeps views into the text and every answer is one, so the text must outlive both;
    /// declaredTypesText always does. A text without a right header is a fault, and so is any line that does
    /// not have four cells or names no identifier. Where two lines name one identifier the first counts.
    static std::expected<TypeTable, TypeTableFault> parse(std::string_view text);

    /// The table to go on with when no other can be had: it knows no type at all.
    static TypeTable withoutDeclarations();

    /// In the order of the text.
    std::span<const TypeDeclaration> declarations() const;

    /// The identifier in the table's spelling, or nothing when no line declares it.
    std::optional<std::string_view> declaredIdentifier(std::string_view identifier) const;

    /// The extension comes without its dot. Nothing when no type of this kind declares it, or when it is not
    /// UTF-8.
    std::optional<std::string_view> typeForExtension(std::string_view extension, TypeKind kind) const;

    /// The type itself, then everything it conforms to, nearest first and each once; empty when it is not
    /// declared. A parent without a line of its own is named but leads no further.
    std::vector<std::string_view> closure(std::string_view identifier) const;

    /// True also for the type itself; false when it is not declared.
    bool conforms(std::string_view identifier, std::string_view ancestor) const;

private:
    /// Finds lines by a name of theirs without regard to ASCII case; several lines may share a name.
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
