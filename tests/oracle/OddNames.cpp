#include "tests/oracle/OddNames.h"

namespace tolvane::tests {

std::string OddName::longest() const {
    constexpr std::size_t length = 255;
    std::string bytes = start;
    while (bytes.size() + piece.size() <= length) {
        bytes += piece;
    }
    return bytes + std::string(length - bytes.size(), 'x');
}

const std::vector<OddName>& oddNames() {
    using namespace std::string_literals;
    static const std::vector<OddName> all{
        {"blanks", " "},
        {"dots", "."},
        {"dashes", "-"},
        {"option", "x", true, "--json="},
        {"lineFeeds", "\n"},
        {"reportRows", "\nPath: x\nvolfs path: \n"},
        {"carriageReturns", "\r"},
        {"tabs", "\t"},
        {"backspaces", "a\b"},
        {"escapes", "\x1b[2J\x1b]0;title\a"},
        {"deviceControls", "\x1bP0;0q\x1b\\\x0e\x0f\x05"},
        {"allControls", "\x01\x02\x03\x04\x05\x06\x07\x08\x0b\x0c\x0e\x0f\x10\x1a\x1c\x1f\x7f"},
        {"c1Controls", "\u0080\u0084\u0085\u008d\u0090\u009b31m\u009d\u009f"},
        {"backslashes", "\\n\\x1b\\u{202e}"},
        {"quotes", "\"'`$(x)"},
        {"percents", "%2F%00%n%s"},
        {"bidiOverrides", "\u202Etxt.\u202Dexe\u202C\u202A\u202B"},
        {"bidiIsolates", "\u2066a\u2067b\u2068c\u2069"},
        {"bidiMarks", "\u200E\u200F\u061C"},
        {"separators", "\u2028\u2029"},
        {"invisible", "\u200B\u200C\u200D\u2060\uFEFF\u00AD\u034F\u180E"},
        {"tags", "\U000E0001\U000E0041\U000E007F"},
        {"variations", "\uFE0F\uFE00\U000E0100"},
        {"privateUse", "\uE000\uF8FF\U000F0000\U00100000"},
        {"noncharacters", "\uFDD0\uFFFE\uFFFF\U0001FFFE\U0010FFFF"},
        {"emoji", "\U0001F600"},
        {"families", "\U0001F469\u200D\U0001F469\u200D\U0001F467"},
        {"loneMarks", "\u0301"},
        {"marksWithoutEnd", "\u0335\u0336\u0489", true, "Z"},
        {"composed", "\u00e9"},
        {"decomposed", "e\u0301"},
        {"hangulComposed", "\uac00"},
        {"hangulDecomposed", "\u1100\u1161"},
        {"rightToLeft", "\u05d0\u0627"},
        {"replacements", "\uFFFD"},
        {"loneContinuations", "\x80\xbf", false},
        {"cutTwo", "\xc3", false},
        {"cutThree", "\xe2\x82", false},
        {"cutFour", "\xf0\x9f\x98", false},
        {"overlongSlash", "\xc0\xaf", false},
        {"overlongThree", "\xe0\x80\xaf", false},
        {"overlongFour", "\xf0\x80\x80\xaf", false},
        {"overlongNul", "\xc0\x80", false},
        {"highSurrogates", "\xed\xa0\xbd", false},
        {"lowSurrogates", "\xed\xb8\x80", false},
        {"surrogatePairs", "\xed\xa0\xbd\xed\xb8\x80", false},
        {"pastTheEnd", "\xf4\x90\x80\x80", false},
        {"fiveBytes", "\xf8\x88\x80\x80\x80", false},
        {"sixBytes", "\xfc\x84\x80\x80\x80\x80", false},
        {"neverBytes", "\xfe\xff", false},
        {"latin1", "caf\xe9 ", false},
        {"shiftJis", "\x93\xfa\x96\x7b", false},
        {"rawC1", "\x9b\x33\x31m\x90", false},
        {"escapeInGarbage", "\xff\x1b[31m\xe2\x80", false},
        {"bidiInGarbage", "\xff\u202E\xfe", false},
    };
    return all;
}

} // namespace tolvane::tests
