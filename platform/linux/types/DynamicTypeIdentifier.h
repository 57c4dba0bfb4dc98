#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Identifiers of undeclared types: "dyn.a" and an encoded text, which contains the tag (a file name
/// extension, a four-character code, ...) by which the type was requested, and what it conforms to.
///
/// The two functions convert any text to such an identifier and back. The struct converts the system's texts:
/// "?0=6:1=go" is the extension go conforming to public.data, "1=go" the extension alone. Well-known names
/// are one hexadecimal digit.
namespace tolvane::platform {

inline constexpr std::string_view filenameExtensionTagClass = "public.filename-extension";
inline constexpr std::string_view fourCharacterCodeTagClass = "com.apple.ostype";
inline constexpr std::string_view mimeTypeTagClass = "public.mime-type";
inline constexpr std::string_view pasteboardTagClass = "com.apple.nspboard-type";
inline constexpr std::string_view urlSchemeTagClass = "public.url-scheme";

/// Nothing when the text is not UTF-8.
std::optional<std::string> encodeDynamicText(std::string_view text);

/// The text in the identifier, in any case. Nothing if it is not dynamic or opaque: a variant other than "a",
/// an invalid character, extra bits, or not UTF-8.
std::optional<std::string> decodeDynamicText(std::string_view identifier);

struct DynamicTypeIdentifier {
    std::vector<std::string> conformances; ///< full names of types; empty when none was asked for
    std::string tagClass;                  ///< its full name
    std::string tag;                       ///< may be empty: no extension

    /// Nothing if the identifier is opaque, or its text has another form or a separator within a name or tag.
    /// Unknown codes are kept ("13").
    static std::optional<DynamicTypeIdentifier> decode(std::string_view identifier);

    /// Extensions are lower-cased. Types and the tag class may be codes. Nothing if a part is not UTF-8, a
    /// tag has a comma, colon, equals sign or backslash (their escape is unknown), or a name is empty or an
    /// unknown code.
    std::optional<std::string> encode() const;

    friend bool operator==(const DynamicTypeIdentifier&, const DynamicTypeIdentifier&) = default;
};

} // namespace tolvane::platform
