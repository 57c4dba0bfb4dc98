#include "platform/values/Utf8.h"

#include <algorithm>
#include <array>

namespace tolvane::platform {

namespace {

constexpr char32_t replacementCharacter = 0xFFFD;

/// What the lead bytes up to `last` imply: the length of the sequence (0 if they cannot begin one) and the
/// range of the second byte, which excludes overlong forms, surrogates and code points that are too large.
struct Lead {
    unsigned char last;
    std::size_t length;
    unsigned char secondLow;
    unsigned char secondHigh;
};

constexpr std::array<Lead, 10> leads{{
    {0x7F, 1, 0, 0},
    {0xC1, 0, 0, 0},
    {0xDF, 2, 0x80, 0xBF},
    {0xE0, 3, 0xA0, 0xBF},
    {0xEC, 3, 0x80, 0xBF},
    {0xED, 3, 0x80, 0x9F},
    {0xEF, 3, 0x80, 0xBF},
    {0xF0, 4, 0x90, 0xBF},
    {0xF3, 4, 0x80, 0xBF},
    {0xF4, 4, 0x80, 0x8F},
}};

constexpr Lead leadOf(unsigned char byte) {
    const auto* const lead =
        std::ranges::find_if(leads, [byte](const Lead& row) { return byte <= row.last; });
    return lead == leads.end() ? Lead{0xFF, 0, 0, 0} : *lead;
}

} // namespace

DecodedCharacter decodeFirstCharacter(std::string_view bytes) {
    if (bytes.empty()) {
        return {};
    }
    const auto first = static_cast<unsigned char>(bytes.front());
    const Lead lead = leadOf(first);
    if (lead.length == 1) {
        return {first, 1, true};
    }
    if (lead.length == 0) {
        return {replacementCharacter, 1, false};
    }

    static constexpr std::array<unsigned, 5> payloadMasks{0, 0x7F, 0x1F, 0x0F, 0x07};
    auto codePoint = static_cast<char32_t>(first & payloadMasks.at(lead.length));
    for (std::size_t i = 1; i < lead.length; ++i) {
        const unsigned char low = i == 1 ? lead.secondLow : 0x80;
        const unsigned char high = i == 1 ? lead.secondHigh : 0xBF;
        if (i >= bytes.size()) {
            return {replacementCharacter, i, false};
        }
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (byte < low || byte > high) {
            return {replacementCharacter, i, false};
        }
        codePoint = (codePoint << 6U) | (byte & 0x3FU);
    }
    return {codePoint, lead.length, true};
}

bool isValidUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto plain =
            std::ranges::find_if(bytes, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
        bytes.remove_prefix(static_cast<std::size_t>(plain - bytes.begin()));
        if (bytes.empty()) {
            break;
        }
        const DecodedCharacter character = decodeFirstCharacter(bytes);
        if (!character.valid) {
            return false;
        }
        bytes.remove_prefix(character.length);
    }
    return true;
}

std::string shownText(std::string_view bytes) {
    if (isValidUtf8(bytes)) {
        return std::string(bytes);
    }
    std::string text;
    while (!bytes.empty()) {
        const DecodedCharacter character = decodeFirstCharacter(bytes);
        appendUtf8(text, character.codePoint);
        bytes.remove_prefix(character.length);
    }
    return text;
}

void appendUtf8(std::string& text, char32_t codePoint) {
    const auto append = [&text](char32_t unit) {
        text.push_back(static_cast<char>(static_cast<unsigned char>(unit)));
    };
    const auto continuation = [&append](char32_t bits) { append(0x80 | (bits & 0x3F)); };
    if (codePoint < 0x80) {
        append(codePoint);
    } else if (codePoint < 0x800) {
        append(0xC0 | (codePoint >> 6));
        continuation(codePoint);
    } else if (codePoint < 0x10000) {
        append(0xE0 | (codePoint >> 12));
        continuation(codePoint >> 6);
        continuation(codePoint);
    } else {
        append(0xF0 | (codePoint >> 18));
        continuation(codePoint >> 12);
        continuation(codePoint >> 6);
        continuation(codePoint);
    }
}

} // namespace tolvane::platform
