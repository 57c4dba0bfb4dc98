#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Identifiers that a system makes for types that are not declared: "dyn.a" and an encoded text that says by
/// which tag (a file name extension, a four-character code, ...) the type was asked for and what it conforms
/// to.
///
/// Two layers. The text layer turns any text into such an identifier and back without loss. The value below
/// reads and writes the texts that the system makes: "?0=6:1=go" is the extension go as a kind of
/// public.data, "1=go" the extension alone. Well-known names stand there as one hexadecimal digit.
namespace tolvane::platform {

inline constexpr std::string_view filenameExtensionTagClass = "public.filename-extension";
inline constexpr std::string_view fourCharacterCodeTagClass = "com.apple.ostype";
inline constexpr std::string_view mimeTypeTagClass = "public.mime-type";
inline constexpr std::string_view pasteboardTagClass = "com.apple.nspboard-type";
inline constexpr std::string_view urlSchemeTagClass = "public.url-scheme";

/// Nothing when the text is not UTF-8.
std::optional<std::string> encodeDynamicText(std::string_view text);

/// The text inside the identifier, read without regard to case. Nothing when the identifier is not dynamic or
/// is opaque: another variant than "a", a character that is never used, bits left over, or a text that is not
/// UTF-8.
std::optional<std::string> decodeDynamicText(std::string_view identifier);

struct DynamicTypeIdentifier {
    std::vector<std::string> conformances; ///< full names of types; empty when none was asked for
    std::string tagClass;                  ///< its full name
    std::string tag;                       ///< may be empty: no extension

    /// Nothing when the identifier is opaque, or its text has another form than the two above or a separator
    /// within a name or tag. A code that has no known name is kept as it stands ("13").
    static std::optional<DynamicTypeIdentifier> decode(std::string_view identifier);

    /// Extensions go in as lower case, other tags as they are. Types and the tag class may be given by their
    /// code too. Nothing when a part is not UTF-8, a tag holds a comma, colon, equals sign or backslash
    /// (how the system writes these is not known), a name is empty or is a code without a known meaning.
    std::optional<std::string> encode() const;

    friend bool operator==(const DynamicTypeIdentifier&, const DynamicTypeIdentifier&) = default;
};

} // namespace tolvane::platform
