#include "platform/values/HiddenCharacters.h"

#include "platform/values/HexDigits.h"

#include <algorithm>
#include <array>

namespace tolvane::platform {

namespace {

struct CodePointRange {
    char32_t first;
    char32_t last;
};

constexpr std::array<CodePointRange, 19> hidden{{
    {0x00, 0x1F},     {0x7F, 0x9F},       {0xAD, 0xAD},       {0x34F, 0x34F},     {0x61C, 0x61C},
    {0x115F, 0x1160}, {0x17B4, 0x17B5},   {0x180E, 0x180E},   {0x200B, 0x200F},   {0x2028, 0x202E},
    {0x2060, 0x206F}, {0x3164, 0x3164},   {0xFDD0, 0xFDEF},   {0xFEFF, 0xFEFF},   {0xFFA0, 0xFFA0},
    {0xFFF9, 0xFFFC}, {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A}, {0xE0000, 0xE007F},
}};

constexpr std::array<const char*, 32> controlNames{"NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL",
                                                   "BS",  "TAB", "LF",  "VT",  "FF",  "CR",  "SO",  "SI",
                                                   "DLE", "DC1", "DC2", "DC3", "DC4", "NAK", "SYN", "ETB",
                                                   "CAN", "EM",  "SUB", "ESC", "FS",  "GS",  "RS",  "US"};

constexpr char32_t firstPrintable = 0x20;
constexpr char32_t deleteCharacter = 0x7F;

} // namespace

bool isHiddenCharacter(char32_t codePoint) {
    if (codePoint >= firstPrintable && codePoint < deleteCharacter) {
        return false;
    }
    constexpr char32_t noncharacterOfAnyPlane = 0xFFFE;
    return (codePoint & noncharacterOfAnyPlane) == noncharacterOfAnyPlane
           || std::ranges::any_of(hidden, [codePoint](const CodePointRange& range) {
                  return range.first <= codePoint && codePoint <= range.last;
              });
}

std::string hiddenCharacterName(char32_t codePoint) {
    if (codePoint < controlNames.size()) {
        return controlNames.at(codePoint);
    }
    if (codePoint == deleteCharacter) {
        return "DEL";
    }
    return "U+" + hexText(codePoint, 4, HexCase::upper);
}

} // namespace tolvane::platform
