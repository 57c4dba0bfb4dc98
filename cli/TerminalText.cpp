#include "cli/TerminalText.h"

#include "platform/values/HiddenCharacters.h"
#include "platform/values/Utf8.h"

#include <array>
#include <charconv>

namespace tolvane::cli {

namespace {

void appendHex(std::string& out, char32_t number, std::size_t width) {
    std::array<char, 8> digits{};
    const auto [end, fault] =
        std::to_chars(digits.data(), digits.data() + digits.size(), static_cast<std::uint32_t>(number), 16);
    const auto count = static_cast<std::size_t>(end - digits.data());
    out.append(width > count ? width - count : 0, '0');
    out.append(digits.data(), count);
}

void appendEscape(std::string& out, char32_t c) {
    switch (c) {
    case U'\n':
        out += "\\n";
        return;
    case U'\t':
        out += "\\t";
        return;
    case U'\r':
        out += "\\r";
        return;
    default:
        break;
    }
    if (c < 0x80) {
        out += "\\x";
        appendHex(out, c, 2);
    } else {
        out += "\\u{";
        appendHex(out, c, 1);
        out += '}';
    }
}

std::string escaped(std::string_view bytes, bool isLayout) {
    std::string out;
    out.reserve(bytes.size());
    while (!bytes.empty()) {
        const platform::DecodedCharacter character = platform::decodeFirstCharacter(bytes);
        const std::string_view raw = bytes.substr(0, character.length);
        if (!character.valid) {
            for (const char byte : raw) {
                out += "\\x";
                appendHex(out, static_cast<unsigned char>(byte), 2);
            }
        } else if (isLayout && (character.codePoint == U'\n' || character.codePoint == U'\\')) {
            out += raw;
        } else if (character.codePoint == U'\\') {
            out += "\\\\";
        } else if (platform::isHiddenCharacter(character.codePoint)) {
            appendEscape(out, character.codePoint);
        } else {
            out += raw;
        }
        bytes.remove_prefix(character.length);
    }
    return out;
}

} // namespace

std::string terminalLine(std::string_view bytes) {
    return escaped(bytes, false);
}

std::string terminalLines(std::string_view bytes) {
    return escaped(bytes, true);
}

details::ReportFields terminalFields(details::ReportFields fields) {
    fields.windowTitle = terminalLine(fields.windowTitle);
    using Texts = details::DetailsTexts;
    // The other one-line texts are numbers and dates that this program formats itself.
    for (const auto member :
         {&Texts::pathTextbox, &Texts::ownerNameTextbox, &Texts::groupNameTextbox, &Texts::typeTextbox,
          &Texts::bookmarkPathTextbox}) {
        if (Texts::Text& text = fields.texts.*member) {
            text = terminalLine(*text);
        }
    }
    if (Texts::Text& attributes = fields.texts.inodeText) {
        attributes = terminalLines(*attributes);
    }
    return fields;
}

} // namespace tolvane::cli
