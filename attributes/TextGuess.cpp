#include "attributes/Guess.h"
#include "attributes/Parsing.h"

#include <algorithm>
#include <array>

namespace tolvane::attributes {

namespace {

constexpr std::int64_t firstSecond = 631'152'000; // 1990
constexpr std::int64_t endSecond = 4'102'444'800; // 2100

bool isAddress(std::string_view text) {
    const std::size_t colon = text.find("://");
    return colon != std::string_view::npos && colon > 0
           && std::ranges::all_of(text.substr(0, colon), [](char c) {
                  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
                         || c == '+' || c == '-' || c == '.';
              });
}

bool isEnclosed(std::string_view text, char open, char close) {
    return text.size() >= 2 && text.front() == open && text.back() == close;
}

/// The date that a decimal number of the usual lengths stands for.
std::optional<platform::Date> dateInDigits(std::string_view text) {
    static constexpr std::array<std::pair<std::size_t, std::int64_t>, 4> units{
        {{10, 1}, {13, 1'000}, {16, 1'000'000}, {19, 1'000'000'000}}};
    const auto number = parsedNumber<std::int64_t>(text);
    for (const auto& [length, perSecond] : units) {
        if (number && text.size() == length && *number / perSecond >= firstSecond
            && *number / perSecond < endSecond) {
            const std::int64_t nanoseconds = *number % perSecond * (1'000'000'000 / perSecond);
            return platform::Date::fromUnixTime(*number / perSecond, static_cast<std::uint32_t>(nanoseconds));
        }
    }
    return std::nullopt;
}

bool isDigestLength(std::size_t digits) {
    static constexpr std::array<std::size_t, 6> lengths{32, 40, 56, 64, 96, 128};
    return std::ranges::find(lengths, digits) != lengths.end();
}

bool isSecurityLabel(std::string_view text) {
    const std::vector<std::string_view> parts = piecesOf(text, ':');
    const auto isWord = [](std::string_view part) {
        return !part.empty() && part.find_first_of(" \t\r\n/") == std::string_view::npos;
    };
    return (parts.size() == 3 || parts.size() == 4) && std::ranges::all_of(parts, isWord)
           && parts[2].ends_with("_t");
}

} // namespace

std::string addTextGuess(std::string_view text, Answer& answer) {
    answer.text("Text", text);
    const std::string_view body = trimmed(text);
    if (isAddress(body)) {
        return "Text that reads as an address.";
    }
    if (body.starts_with('/') && !body.contains('\n')) {
        return "Text that reads as a path.";
    }
    if (isUUIDText(body)) {
        return "Text that reads as a UUID.";
    }
    if (isEnclosed(body, '{', '}') || isEnclosed(body, '[', ']')) {
        return body.contains('"') || body == "{}" || body == "[]" ? "Text that reads as JSON."
                                                                  : "Text that reads as a list of settings.";
    }
    if (body.starts_with('[') && body.contains(']') && body.contains('=')) {
        return "Text that reads as settings in sections.";
    }
    if (isEnclosed(body, '<', '>')) {
        return "Text that reads as XML.";
    }
    if (isSecurityLabel(body)) {
        return "Text that reads as a security label.";
    }
    if (const auto date = dateInDigits(body)) {
        answer.date("As a date", *date);
        return "Text: a number that reads as a time since 1970.";
    }
    if (isHexText(body) && isDigestLength(body.size())) {
        return "Text: " + std::to_string(body.size()) + " hexadecimal digits, as many as a checksum has.";
    }
    return text.empty() ? "Text without characters." : "Text.";
}

} // namespace tolvane::attributes
