#include "details/ShellWord.h"

#include "platform/values/HiddenCharacters.h"
#include "platform/values/Utf8.h"

#include <algorithm>

namespace tolvane::details {

namespace {

bool isSafe(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z')
           || std::string_view("/._-+,:@%").contains(c);
}

/// Always three digits, so that no digit that follows is taken for part of it.
std::string octalEscape(unsigned byte) {
    constexpr unsigned digitBits = 3;
    constexpr unsigned digitMask = 7;
    std::string escape = "\\";
    for (const unsigned shift : {2 * digitBits, digitBits, 0U}) {
        escape += static_cast<char>('0' + ((byte >> shift) & digitMask));
    }
    return escape;
}

} // namespace

std::string shellWord(std::string_view bytes) {
    if (!bytes.empty() && std::ranges::all_of(bytes, isSafe)) {
        return std::string(bytes);
    }
    bool needsEscapes = false;
    std::string quoted;
    std::string escaped;
    for (std::string_view rest = bytes; !rest.empty();) {
        const platform::DecodedCharacter character = platform::decodeFirstCharacter(rest);
        const std::string_view piece = rest.substr(0, character.length);
        rest.remove_prefix(character.length);
        if (!character.valid || platform::isHiddenCharacter(character.codePoint)) {
            needsEscapes = true;
            for (const char c : piece) {
                escaped += octalEscape(static_cast<unsigned char>(c));
            }
        } else if (piece == "'") {
            quoted += "'\\''";
            escaped += "\\'";
        } else {
            quoted += piece;
            escaped += piece == "\\" ? "\\\\" : piece;
        }
    }
    return needsEscapes ? "$'" + escaped + "'" : "'" + quoted + "'";
}

} // namespace tolvane::details
