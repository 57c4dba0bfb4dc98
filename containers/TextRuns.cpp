#include "containers/TextRuns.h"

#include "platform/values/Base64.h"
#include "platform/values/HexDigits.h"

#include <algorithm>

namespace tolvane::containers {

using namespace platform;

namespace {

constexpr std::string_view blanks = " \t\r\n";

bool isHexDigit(char c) {
    return valueOfHexDigit(c) >= 0;
}

bool isBase64Digit(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '/';
}

std::optional<Data> bytesOfHex(std::string_view digits) {
    if (digits.empty() || digits.size() % 2 != 0 || !std::ranges::all_of(digits, isHexDigit)) {
        return std::nullopt;
    }
    Data bytes;
    bytes.reserve(digits.size() / 2);
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        bytes.push_back(
            static_cast<std::byte>(valueOfHexDigit(digits[i]) * 16 + valueOfHexDigit(digits[i + 1])));
    }
    return bytes;
}

/// Base-64 with its padding, or with none.
std::optional<Data> bytesOfBase64(std::string_view digits) {
    std::string padded(digits.substr(0, digits.find('=')));
    padded.append((4 - padded.size() % 4) % 4, '=');
    return base64DecodedData(padded);
}

/// The run of digits at the front of a text.
std::string_view runOf(std::string_view text, bool (*isDigit)(char)) {
    const auto end = std::ranges::find_if_not(text, isDigit);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

/// The next place where the digits of a bookmark's first letters are: "book" in base-64 and hexadecimal.
std::size_t nextRun(std::string_view text, std::size_t from) {
    const auto mayBegin = [](char c) { return c == 'Y' || c == '6'; };
    for (std::string_view rest = text.substr(from);;) {
        const auto begin = std::ranges::find_if(rest, mayBegin);
        rest.remove_prefix(static_cast<std::size_t>(begin - rest.begin()));
        if (rest.empty()) {
            return std::string_view::npos;
        }
        if (rest.starts_with("Ym9va") || rest.starts_with("626f6f6b") || rest.starts_with("626F6F6B")) {
            return text.size() - rest.size();
        }
        rest.remove_prefix(1);
    }
}

} // namespace

std::optional<Data> bytesOfDigits(std::string_view text) {
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits), [](char c) { return !blanks.contains(c); });
    if (digits.empty()) {
        return std::nullopt;
    }
    if (auto bytes = bytesOfHex(digits)) {
        return bytes;
    }
    return base64DecodedData(digits);
}

void collectFromText(
    std::string_view text, const std::string& where, Collector& collector, const Label& label) {
    for (std::size_t place = nextRun(text, 0); place != std::string_view::npos && !collector.isFull();) {
        const std::string_view rest = text.substr(place);
        const bool isHex = rest.starts_with('6');
        const std::string_view run = runOf(rest, isHex ? isHexDigit : isBase64Digit);
        const std::string at = run.size() == text.size() ? where : where + "@" + std::to_string(place);
        if (run.size() > longestTextRun) {
            collector.complain("A run of digits at " + at + " is too long and was left out.");
        } else if (
            const auto bytes = isHex ? bytesOfHex(run.substr(0, run.size() / 2 * 2)) : bytesOfBase64(run)) {
            collector.add(*bytes, at, label);
        }
        place = nextRun(text, place + run.size());
    }
}

} // namespace tolvane::containers
