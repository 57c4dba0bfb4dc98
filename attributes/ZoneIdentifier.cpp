#include "attributes/Decoders.h"
#include "attributes/Parsing.h"

#include <array>

namespace tolvane::attributes {

namespace {

constexpr std::array<Named, 5> zones{
    {{0, "my computer"},
     {1, "local intranet"},
     {2, "trusted sites"},
     {3, "Internet"},
     {4, "untrusted sites"}}};

/// The text in UTF-8, whatever of the two forms it has.
std::string zoneText(std::span<const std::byte> bytes) {
    const std::string_view text = textOf(bytes);
    constexpr std::string_view mark8 = "\xEF\xBB\xBF";
    if (text.starts_with("\xFF\xFE")) {
        return textOfUtf16(bytes.subspan(2));
    }
    return std::string(text.starts_with(mark8) ? text.substr(mark8.size()) : text);
}

} // namespace

Outcome decodeZoneIdentifier(const Subject& subject, Answer& answer) {
    std::string text = zoneText(subject.bytes);
    if (text.ends_with('\0')) {
        text.pop_back();
    }
    if (!isText(text)) {
        return misfit(0, "text in UTF-8, or UTF-16 with a mark");
    }
    bool isInSection = false;
    std::string zone;
    std::string host;
    for (const std::string_view line : piecesOf(text, '\n')) {
        const std::string_view entry = trimmed(line);
        if (entry.starts_with('[')) {
            isInSection = entry == "[ZoneTransfer]";
            continue;
        }
        const std::size_t equals = entry.find('=');
        if (entry.empty()) {
            continue;
        }
        if (!isInSection || equals == std::string_view::npos) {
            answer.note("A line that is no entry of [ZoneTransfer]: " + shortened(entry));
            continue;
        }
        const std::string_view key = entry.substr(0, equals);
        const std::string_view value = entry.substr(equals + 1);
        const auto number = parsedNumber<std::uint32_t>(value);
        if (key == "ZoneId" && number) {
            answer.named("Zone", *number, zones);
            zone = nameIn(zones, *number);
        } else if (key == "HostUrl") {
            host = value == "about:internet" ? "" : value;
            answer.text("File address", value == "about:internet" ? "hidden (about:internet)" : value);
        } else if (key == "ReferrerUrl") {
            answer.text("Page address", value);
        } else if (key == "LastWriterPackageFamilyName") {
            answer.text("Last written by", value);
        } else {
            answer.text(key, value);
        }
    }
    if (!text.contains("[ZoneTransfer]")) {
        return misfit(0, "the line [ZoneTransfer]");
    }
    answer.summary(
        "Windows: where the file came from; zone: " + (zone.empty() ? "not stated" : zone)
        + (host.empty() ? "" : ", downloaded from " + shortened(host)) + ".");
    return {};
}

} // namespace tolvane::attributes
