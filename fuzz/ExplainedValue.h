/// What an explanation of any bytes promises.
#pragma once

#include "attributes/Explanation.h"
#include "fuzz/Fuzz.h"
#include "platform/values/HiddenCharacters.h"
#include "platform/values/Utf8.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::fuzz {

/// Texts are UTF-8 without a character that is not seen.
inline void requireShown(std::string_view text) {
    while (!text.empty()) {
        const platform::DecodedCharacter character = platform::decodeFirstCharacter(text);
        require(character.valid, "texts are UTF-8");
        require(!platform::isHiddenCharacter(character.codePoint), "hidden characters are written out");
        text.remove_prefix(character.length);
    }
}

inline void requireSound(const attributes::Explanation& explanation) {
    require(platform::isValidUtf8(explanation.name), "names are UTF-8");
    require(!explanation.title.empty() && !explanation.summary.empty(), "there is a title and a sentence");
    requireShown(explanation.title);
    requireShown(explanation.summary);
    constexpr std::size_t longestSentence = 8'192;
    require(explanation.summary.size() <= longestSentence, "a sentence is short");
    // One more than the limits says how copies treat the attribute; what is written out grows.
    require(explanation.fields.size() <= attributes::mostFields + 1, "fields are limited");
    constexpr std::size_t mostGrowth = 12;
    std::size_t length = 0;
    for (const attributes::Field& field : explanation.fields) {
        requireShown(field.name);
        requireShown(field.text);
        length += field.name.size() + field.text.size();
    }
    require(length <= attributes::mostText * mostGrowth, "texts are limited");
    require(explanation.notes.size() <= 102, "notes are limited");
    for (const std::string& note : explanation.notes) {
        requireShown(note);
    }
}

/// Explains a value twice, and once more where account names are known.
inline void explainAndRequire(std::string_view name, std::span<const std::byte> value) {
    const attributes::Explanation first = attributes::explain(name, value);
    requireSound(first);
    const attributes::Explanation second = attributes::explain(name, value);
    require(
        first.summary == second.summary && first.fields.size() == second.fields.size(),
        "the same bytes mean the same");
    const attributes::Questions questions{
        [](attributes::AccountKind, std::uint32_t) {
            return std::optional<std::string>("a\xE2\x80\xAE\xFF");
        },
        platform::ItemKind::folder};
    requireSound(attributes::explain(name, value, questions));
}

} // namespace tolvane::fuzz
