// Escapes any bytes for a terminal, and decodes them again.
#include "cli/TerminalText.h"
#include "fuzz/Fuzz.h"
#include "platform/values/HiddenCharacters.h"
#include "platform/values/Utf8.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace {

using namespace tolvane;

void requireHarmless(std::string_view shown, bool isLayout) {
    fuzz::require(platform::isValidUtf8(shown), "what is shown is UTF-8");
    while (!shown.empty()) {
        const platform::DecodedCharacter character = platform::decodeFirstCharacter(shown);
        fuzz::require(
            !platform::isHiddenCharacter(character.codePoint) || (isLayout && character.codePoint == U'\n'),
            "nothing hidden is left");
        shown.remove_prefix(character.length);
    }
}

char32_t hexNumber(std::string_view digits) {
    std::uint32_t number = 0;
    const auto [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    fuzz::require(end == digits.data() + digits.size() && fault == std::errc(), "an escape has its digits");
    return number;
}

/// The bytes that an escaped line stands for.
std::string bytesShown(std::string_view line) {
    std::string bytes;
    while (!line.empty()) {
        if (line.front() != '\\') {
            bytes += line.front();
            line.remove_prefix(1);
            continue;
        }
        constexpr std::string_view letters = "\\ntr";
        constexpr std::string_view meanings = "\\\n\t\r";
        fuzz::require(line.size() > 1, "an escape has its letter");
        const std::size_t letter = letters.find(line[1]);
        std::size_t length = 2;
        if (letter != std::string_view::npos) {
            bytes += meanings[letter];
        } else if (line[1] == 'x') {
            length = 4;
            bytes += static_cast<char>(hexNumber(line.substr(2, 2)));
        } else {
            fuzz::require(line.starts_with("\\u{"), "there is no other escape");
            length = std::min(line.find('}'), line.size() - 1) + 1;
            platform::appendUtf8(bytes, hexNumber(line.substr(3, length - 4)));
        }
        line.remove_prefix(length);
    }
    return bytes;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::textOf(data, size);
    const std::string line = cli::terminalLine(bytes);
    requireHarmless(line, false);
    fuzz::require(line.size() <= 8 * size, "no character takes more than an escape");
    fuzz::require(bytesShown(line) == bytes, "what is shown determines every byte");

    const std::string lines = cli::terminalLines(bytes);
    requireHarmless(lines, true);
    fuzz::require(
        std::ranges::count(lines, '\n') == std::ranges::count(bytes, '\n'), "the layout keeps its lines");
    fuzz::require(cli::terminalLines(lines) == lines, "what is shown needs no more escapes");

    details::ReportFields fields;
    fields.texts.pathTextbox = bytes;
    fields.texts.inodeText = bytes;
    fields = cli::terminalFields(fields);
    fuzz::require(
        fields.texts.pathTextbox == line && fields.texts.inodeText == lines, "a report is shown like this");

    const std::string shown = platform::shownText(bytes);
    fuzz::require(platform::isValidUtf8(shown), "text to show is UTF-8");
    fuzz::require(platform::shownText(shown) == shown, "and stays as it is");
    fuzz::require((shown == bytes) == platform::isValidUtf8(bytes), "what is UTF-8 is shown as it is");

    std::string_view rest = bytes;
    while (!rest.empty()) {
        const platform::DecodedCharacter character = platform::decodeFirstCharacter(rest);
        const std::string name = platform::hiddenCharacterName(character.codePoint);
        fuzz::require(
            !name.empty() && std::ranges::all_of(name, [](char c) { return c > ' ' && c < '\x7F'; }),
            "a name of a character is ASCII");
        rest.remove_prefix(character.length);
    }
    return 0;
}
