#include "attributes/Answer.h"

#include "platform/values/HexDigits.h"
#include "platform/values/HiddenCharacters.h"
#include "platform/values/Utf8.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tolvane::attributes {

using platform::Value;

namespace {

constexpr std::size_t mostNotes = 100;

/// What a bytes field shows; its value has them all.
constexpr std::size_t mostShownBytes = 512;

} // namespace

std::string visibleText(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    while (!bytes.empty()) {
        const platform::DecodedCharacter character = platform::decodeFirstCharacter(bytes);
        if (platform::isHiddenCharacter(character.codePoint)) {
            out.append("⟨").append(platform::hiddenCharacterName(character.codePoint)).append("⟩");
        } else {
            platform::appendUtf8(out, character.codePoint);
        }
        bytes.remove_prefix(character.length);
    }
    return out;
}

std::string dateText(const platform::Date& date) {
    if (!date.hasCalendarDate()) {
        return date.description();
    }
    std::string text = date.iso8601();
    text.pop_back();
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) {
        text.pop_back();
    }
    std::ranges::replace(text, 'T', ' ');
    return text + " UTC";
}

std::string dateTextOfDouble(const platform::Date& date) {
    constexpr std::uint32_t nanosecondsInOne = 1'000;
    constexpr std::uint32_t perSecond = 1'000'000'000;
    if (!date.hasCalendarDate()) {
        return dateText(date);
    }
    const std::uint32_t rounded =
        (date.nanoseconds() + nanosecondsInOne / 2) / nanosecondsInOne * nanosecondsInOne;
    const bool isNextSecond = rounded == perSecond;
    if (isNextSecond && date.unixSeconds() == std::numeric_limits<std::int64_t>::max()) {
        return dateText(date);
    }
    return dateText(platform::Date::fromUnixTime(
        date.unixSeconds() + (isNextSecond ? 1 : 0), isNextSecond ? 0 : rounded));
}

std::string hexNumber(std::uint64_t number, std::size_t digits) {
    return "0x" + platform::hexText(number, digits);
}

std::string hexDigits(std::span<const std::byte> bytes) {
    std::string text;
    for (const std::byte byte : bytes) {
        platform::appendHex(text, std::to_integer<std::uint64_t>(byte), 2);
    }
    return text;
}

std::string flagNames(std::uint64_t number, std::span<const Flag> flags) {
    std::string text;
    for (const Flag& flag : flags) {
        if ((number & flag.bits) == flag.bits && flag.bits != 0) {
            text.append(text.empty() ? "" : ", ").append(flag.name);
            number &= ~flag.bits;
        }
    }
    if (number != 0) {
        text.append(text.empty() ? "" : ", ").append("unknown ").append(hexNumber(number));
    }
    return text.empty() ? "none" : text;
}

std::string_view nameIn(std::span<const Named> names, std::uint64_t number) {
    const auto found = std::ranges::find(names, number, &Named::number);
    return found == names.end() ? std::string_view() : found->name;
}

void Answer::note(std::string_view text) {
    if (explanation_.notes.size() < mostNotes) {
        explanation_.notes.push_back(visibleText(text));
    } else {
        ++omittedNotes_;
    }
}

void Answer::add(std::string_view name, std::string_view text, Value value) {
    if (explanation_.fields.size() >= mostFields || text.size() + name.size() > mostText - textSize_) {
        ++omitted_;
        return;
    }
    textSize_ += text.size() + name.size();
    explanation_.fields.push_back({visibleText(name), visibleText(text), std::move(value)});
}

void Answer::text(std::string_view name, std::string_view text) {
    add(name, text, platform::shownText(text));
}

void Answer::number(std::string_view name, std::uint64_t number, std::string_view unit) {
    std::string text = std::to_string(number);
    if (!unit.empty()) {
        text.append(" ").append(unit);
    }
    add(name, text, number);
}

void Answer::signedNumber(std::string_view name, std::int64_t number) {
    add(name, std::to_string(number), number);
}

void Answer::hex(std::string_view name, std::uint64_t number, std::size_t digits) {
    add(name, hexNumber(number, digits), number);
}

void Answer::yes(std::string_view name, bool is) {
    add(name, is ? "yes" : "no", is);
}

void Answer::date(std::string_view name, const platform::Date& date) {
    add(name, dateText(date), date);
}

void Answer::uuid(std::string_view name, std::span<const std::byte> sixteenBytes) {
    platform::UUID uuid;
    std::ranges::copy(sixteenBytes.first(uuid.bytes.size()), uuid.bytes.begin());
    add(name, uuid.text(), uuid);
}

void Answer::bytes(std::string_view name, std::span<const std::byte> bytes) {
    std::string text =
        bytes.empty() ? "none" : hexDigits(bytes.first(std::min(bytes.size(), mostShownBytes)));
    if (bytes.size() > mostShownBytes) {
        text += "… (" + std::to_string(bytes.size()) + " bytes)";
    }
    add(name, text, platform::Data(bytes.begin(), bytes.end()));
}

void Answer::flags(
    std::string_view name, std::uint64_t number, std::span<const Flag> flags, std::size_t digits) {
    add(name, flagNames(number, flags) + " (" + hexNumber(number, digits) + ")", number);
}

void Answer::named(std::string_view name, std::uint64_t number, std::span<const Named> names) {
    const std::string_view known = nameIn(names, number);
    std::string text(known.empty() ? "unknown" : known);
    add(name, text.append(" (").append(std::to_string(number)).append(")"), number);
}

void Answer::account(std::string_view name, AccountKind kind, std::uint32_t number) {
    std::string text = std::to_string(number);
    if (const std::string known = accountText(kind, number); known != text) {
        text += " (" + known + ")";
    }
    add(name, text, number);
}

std::string Answer::accountText(AccountKind kind, std::uint32_t number) const {
    const auto known =
        questions_.accountName ? questions_.accountName(kind, number) : std::optional<std::string>();
    return known ? *known : std::to_string(number);
}

void Answer::finish() {
    if (omitted_ > 0) {
        explanation_.notes.push_back(std::to_string(omitted_) + " more fields are not shown");
    }
    if (omittedNotes_ > 0) {
        explanation_.notes.push_back(std::to_string(omittedNotes_) + " more notes are not shown");
    }
}

} // namespace tolvane::attributes
