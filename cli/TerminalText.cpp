#include "cli/TerminalText.h"

#include "platform/values/HexDigits.h"
#include "platform/values/HiddenCharacters.h"
#include "platform/values/Utf8.h"

namespace tolvane::cli {

namespace {

void appendEscape(std::string& out, char32_t c) {
    static constexpr std::string_view escaped = "\n\t\r";
    static constexpr std::string_view letters = "ntr";
    const std::size_t index = c < 0x80 ? escaped.find(static_cast<char>(c)) : std::string_view::npos;
    if (index != std::string_view::npos) {
        out += {'\\', letters[index]};
    } else if (c < 0x80) {
        platform::appendHex(out += "\\x", c, 2);
    } else {
        platform::appendHex(out += "\\u{", c, 1);
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
                platform::appendHex(out += "\\x", static_cast<unsigned char>(byte), 2);
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
