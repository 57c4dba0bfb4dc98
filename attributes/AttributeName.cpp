#include "attributes/AttributeName.h"

#include "platform/values/Utf8.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace tolvane::attributes {

namespace {

constexpr std::string_view streamPrefix = "user.DosStream.";
constexpr std::string_view streamSuffix = ":$DATA";
constexpr std::string_view metadataPrefix = "com.apple.metadata";
constexpr std::string_view flagLetters = "CPNSBXcpnsbx";

/// The prefixes that Linux has; a name without one is a Mac's own.
constexpr std::array<std::string_view, 8> linuxPrefixes{"user.",  "security.", "system.", "trusted.",
                                                        "btrfs.", "os2.",      "osx.",    "gnu."};

/// What the names of Macs begin with, also behind a prefix of Linux.
constexpr std::array<std::string_view, 4> macBeginnings{
    "com.apple.", "com.dropbox.", "com.macromates.", "org.exiftool."};

bool beginsWithOneOf(std::string_view text, const auto& beginnings) {
    return std::ranges::any_of(beginnings, [text](std::string_view each) { return text.starts_with(each); });
}

/// The characters that SMB clients map to a private area, put back.
std::string withoutPrivateCharacters(std::string_view name) {
    constexpr char32_t first = 0xF020;
    constexpr std::string_view mapped = "\"*:<>?\\| .";
    std::string out;
    while (!name.empty()) {
        const platform::DecodedCharacter character = platform::decodeFirstCharacter(name);
        const char32_t index = character.codePoint - first;
        if (character.codePoint >= first && index < mapped.size()) {
            out += mapped[index];
        } else {
            out += name.substr(0, character.length);
        }
        name.remove_prefix(character.length);
    }
    return out;
}

} // namespace

AttributeName attributeName(std::string_view name) {
    AttributeName result;
    if (name.starts_with(streamPrefix)) {
        result.isStream = true;
        name.remove_prefix(streamPrefix.size());
        if (name.ends_with(streamSuffix)) {
            name.remove_suffix(streamSuffix.size());
        }
    }
    std::string known = withoutPrivateCharacters(name);
    for (const std::string_view prefix : {std::string_view("osx."), std::string_view("user.")}) {
        if (known.starts_with(prefix)
            && (prefix == "osx."
                || beginsWithOneOf(std::string_view(known).substr(prefix.size()), macBeginnings))) {
            known.erase(0, prefix.size());
            break;
        }
    }
    if (known.starts_with(metadataPrefix) && known.size() > metadataPrefix.size()
        && known[metadataPrefix.size()] != ':') {
        known.insert(metadataPrefix.size(), ":");
    }
    const std::size_t mark = known.rfind('#');
    if (mark != std::string::npos && mark + 1 < known.size() && !beginsWithOneOf(known, linuxPrefixes)
        && known.find_first_not_of(flagLetters, mark + 1) == std::string::npos) {
        result.flags = known.substr(mark + 1);
        known.erase(mark);
    }
    result.known = std::move(known);
    return result;
}

std::string flagLetterNames(std::string_view letters) {
    static constexpr std::array<std::pair<char, std::string_view>, 6> names{
        {{'C', "depends on the content"},
         {'P', "not exported"},
         {'N', "never copied"},
         {'S', "synchronised"},
         {'B', "only in backups"},
         {'X', "only when saved"}}};
    std::string text;
    for (const char letter : letters) {
        const auto upper = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
        for (const auto& [known, name] : names) {
            if (known == upper) {
                text.append(text.empty() ? "" : ", ").append(letter == upper ? "" : "not: ").append(name);
            }
        }
    }
    return text;
}

} // namespace tolvane::attributes
