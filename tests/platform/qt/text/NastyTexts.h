#pragma once

#include <string>
#include <vector>

namespace tolvane::tests {

struct NastyText {
    std::string name;
    std::string bytes;
};

/// Texts that a text widget by itself would change, cut or draw as something else.
inline std::vector<NastyText> nastyTexts() {
    using namespace std::string_literals;
    std::vector<NastyText> texts{
        {"empty", ""},
        {"plain", "/home/user/file.txt"},
        {"carriage return", "a\rb"},
        {"carriage return at the end", "a\r"},
        {"line ends of all kinds", "a\r\nb\nc\rd\n\re\r\r\n\n"},
        {"line feeds only", "\n\n\n"},
        {"blanks", "  a  b \n  "},
        {"tabs", "\ta\t\tb\n\t"},
        {"no-break spaces", "a\u00A0\u00A0b\u202Fc"},
        {"only a no-break space", "\u00A0"},
        {"line and paragraph separators", "a\u2028b\u2029c\u2029\u2029"},
        {"NUL", "a\0b\0\0c"s},
        {"NUL at both ends", "\0a\0"s},
        {"other controls", "\x01\x02\x03\x04\x05\x06\x07\x08\x0B\x0C\x0E\x0F\x10\x1A\x1B[31m\x1F\x7F"},
        {"controls of the second kind", "a\u0080\u0085\u009B\u009Fb"},
        {"object replacement", "a\uFFFCb\uFFFC\uFFFC"},
        {"interlinear annotation", "\uFFF9a\uFFFAb\uFFFB"},
        {"noncharacters", "\uFDD0\uFDD1\uFDEF\uFFFE\uFFFF\U0001FFFE\U0010FFFF"},
        {"bidirectional controls",
         "\u202Etxt.exe\u202C \u2066a\u2069\u200E\u200F\u061C\u202A\u202B\u202D\u2067\u2068"},
        {"right to left", "/home/\u05D0\u05D1\u05D2/\u0645\u0644\u0641/x"},
        {"zero width", "a\u200Bb\u200Cc\u200Dd\u2060e\uFEFFf"},
        {"byte order mark first", "\uFEFFa"},
        {"replacement characters", "\uFFFD\uFFFDa"},
        {"control pictures", "\u2400\u240D\u237D"},
        {"token look-alikes", "\u27E8NUL\u27E9\u27E8byte FF\u27E9"},
        {"a control beside its picture", "\0\u2400\0\u2400"s},
        {"emoji", "\U0001F600a\U0001F468\u200D\U0001F469\u200D\U0001F467\u2764\uFE0F\U0001F1E9\U0001F1EA"},
        {"combining marks", "e\u0301a\u0308\u0323\u0301 \u0301"},
        {"a control before a combining mark", "\x01\u0301\0\u0308"s},
        {"soft hyphen and fillers", "a\u00ADb\u034F\u3164\uFFA0\u180E"},
        {"tag characters", "\U0001F3F4\U000E0067\U000E007F\U000E0001"},
        {"private use", "\uE000\U000F0000"},
        {"invalid bytes", "a\xFF\xFE\x80 b\xC3"},
        {"overlong forms", "\xC0\x80\xE0\x80\xAF"},
        {"surrogates in UTF-8", "\xED\xA0\x80\xED\xB0\x80"},
        {"past the last code point", "\xF4\x90\x80\x80\xF5"},
        {"cut emoji", "\xF0\x9F\x98"},
        {"equal neighbours", "\x01\x01\x01\x02\x01\r\r\r\u200B\u200B\xFF\xFF\xFF"},
        {"looks like markup", "<b>a</b>&amp;<img src='x'>"},
        {"20,000 NULs", std::string(20'000, '\0')},
        {"40,000 characters in one line", std::string(40'000, 'x')},
    };
    std::string faces;
    std::string marks = "e";
    std::string longAndShort;
    for (std::size_t i = 0; i < 100; ++i) {
        longAndShort += std::string(i * 211 % 5'000, 'x') + (i % 2 == 0 ? "\n"s : " \0"s);
    }
    for (int i = 0; i < 6'000; ++i) {
        faces += "\U0001F600\u00E9";
        marks += "\u0301";
    }
    texts.push_back({"many characters of two units in one line", faces});
    texts.push_back({"many marks on one letter", marks});
    texts.push_back({"long and short lines", longAndShort + "\n\n" + longAndShort});
    std::string mixed;
    while (mixed.size() < 40'000) {
        mixed += "path/\u00E4\r\u202E\xFF\u00A0";
    }
    texts.push_back({"40,000 bytes of everything in one line", mixed});
    std::string lines;
    constexpr std::size_t mebibyte = 1024 * 1024;
    while (lines.size() < mebibyte) {
        lines +=
            "Each of these lines holds \u00E4 few words and a number: " + std::to_string(lines.size()) + "\n";
    }
    lines.resize(mebibyte);
    texts.push_back({"1 MiB in many lines", lines});
    return texts;
}

} // namespace tolvane::tests
