#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/HexDigits.h"

#include <array>

namespace tolvane::attributes {

namespace {

constexpr std::uint64_t downloaded = 0x0001;
constexpr std::uint64_t sandboxed = 0x0002;
constexpr std::uint64_t hard = 0x0004;
constexpr std::uint64_t approved = 0x0040;

constexpr std::array<Flag, 7> quarantineFlags{
    {{downloaded, "download"},
     {sandboxed, "made by a sandboxed application"},
     {hard, "never runs"},
     {0x0020, "seen in old values after the first question"},
     {approved, "approved by the user"},
     {0x0080, "translocated when opened"},
     {0x0100, "not translocated"}}};

/// The text with "\x20" and the like decoded.
std::string withoutEscapes(std::string_view text) {
    std::string out;
    while (!text.empty()) {
        if (text.starts_with("\\x") && text.size() >= 4) {
            const int high = platform::valueOfHexDigit(text[2]);
            const int low = platform::valueOfHexDigit(text[3]);
            if (high >= 0 && low >= 0) {
                out += static_cast<char>(high * 16 + low);
                text.remove_prefix(4);
                continue;
            }
        }
        out += text.front();
        text.remove_prefix(1);
    }
    return out;
}

std::string sentence(std::uint64_t flags, const std::string& when, const std::string& agent) {
    const std::string by = agent.empty() ? "" : " by " + shortened(agent);
    if ((flags & (downloaded | sandboxed)) == sandboxed) {
        return "macOS: saved" + when
               + (agent.empty() ? " by a sandboxed application"
                                : " by the sandboxed application " + shortened(agent))
               + ", not a download.";
    }
    const std::string state = (flags & hard) != 0       ? "it never runs"
                              : (flags & approved) != 0 ? "the user has opened and allowed it"
                                                        : "not opened yet, macOS asks before it is";
    return "macOS: " + std::string((flags & downloaded) != 0 ? "downloaded" : "put in quarantine") + when + by
           + "; " + state + ".";
}

} // namespace

Outcome decodeQuarantine(const Subject& subject, Answer& answer) {
    std::string_view text = textWithoutNul(subject.bytes);
    if (!isText(text)) {
        return misfit(0, "a text without NUL but at its end");
    }
    const std::size_t before = text.starts_with("q/") ? 2 : 0;
    text.remove_prefix(before);
    const std::vector<std::string_view> parts = piecesOf(text, ';');
    if (parts.size() < 2 || parts.size() > 4) {
        return misfit(before, "\"flags;time;agent;event\"");
    }
    const auto flags = parsedNumber<std::uint32_t>(parts[0], 16);
    const auto time = parts[1].empty() ? 0 : parsedNumber<std::uint32_t>(parts[1], 16);
    if (!flags) {
        return misfit(before, "flags in hexadecimal");
    }
    if (!time) {
        return misfit(before + parts[0].size() + 1, "a time in hexadecimal");
    }
    answer.flags("Flags", *flags, quarantineFlags, 4);
    std::string when;
    if (*time != 0) {
        const platform::Date date = platform::Date::fromUnixTime(*time, 0);
        answer.date("Time", date);
        when = " on " + dateText(date);
    }
    const std::string agent = withoutEscapes(parts.size() > 2 ? parts[2] : std::string_view());
    if (!agent.empty()) {
        answer.text("Agent", agent);
    }
    std::string_view event = parts.size() > 3 ? parts[3] : std::string_view();
    const std::size_t bar = event.find('|');
    if (!event.substr(0, bar).empty()) {
        answer.text("Event", event.substr(0, bar));
    }
    if (bar != std::string_view::npos) {
        answer.text("Bundle", event.substr(bar + 1));
    }
    if (before != 0) {
        answer.text("Stored as", "an archive's companion file (\"q/\" before the value)");
    }
    answer.summary(sentence(*flags, when, agent));
    return {};
}

} // namespace tolvane::attributes
