#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <algorithm>
#include <array>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

constexpr std::array<std::byte, 12> userPrefix{
    std::byte{0xFF}, std::byte{0xFF}, std::byte{0xEE}, std::byte{0xEE}, std::byte{0xDD}, std::byte{0xDD},
    std::byte{0xCC}, std::byte{0xCC}, std::byte{0xBB}, std::byte{0xBB}, std::byte{0xAA}, std::byte{0xAA}};
constexpr std::array<std::byte, 12> groupPrefix{
    std::byte{0xAB}, std::byte{0xCD}, std::byte{0xEF}, std::byte{0xAB}, std::byte{0xCD}, std::byte{0xEF},
    std::byte{0xAB}, std::byte{0xCD}, std::byte{0xEF}, std::byte{0xAB}, std::byte{0xCD}, std::byte{0xEF}};

constexpr std::array<Flag, 5> macEntryFlags{
    {{0x10, "was inherited"},
     {0x20, "files inherit"},
     {0x40, "folders inherit"},
     {0x80, "inherited one level"},
     {0x100, "only inherited"}}};

constexpr std::array<Flag, 14> macRights{
    {{1U << 1U, "read or list"},
     {1U << 2U, "write or add files"},
     {1U << 3U, "run or search"},
     {1U << 4U, "delete"},
     {1U << 5U, "append or add folders"},
     {1U << 6U, "delete children"},
     {1U << 7U, "read attributes"},
     {1U << 8U, "write attributes"},
     {1U << 9U, "read extended attributes"},
     {1U << 10U, "write extended attributes"},
     {1U << 11U, "read rights"},
     {1U << 12U, "change rights"},
     {1U << 13U, "take ownership"},
     {1U << 20U, "synchronize"}}};

/// An account's GUID; those of accounts without one hold the number.
std::string macAccount(std::span<const std::byte> guid, const Answer& answer) {
    ByteCursor number(guid.subspan(12));
    const std::uint32_t account = number.u32be();
    if (std::ranges::equal(guid.first(12), userPrefix)) {
        return "user " + answer.accountText(AccountKind::user, account);
    }
    if (std::ranges::equal(guid.first(12), groupPrefix)) {
        return "group " + answer.accountText(AccountKind::group, account);
    }
    platform::UUID uuid;
    std::ranges::copy(guid.first(16), uuid.bytes.begin());
    return uuid.text();
}

bool isAllZero(std::span<const std::byte> bytes) {
    return std::ranges::all_of(bytes, [](std::byte byte) { return byte == std::byte{0}; });
}

} // namespace

Outcome decodeMacSecurity(const Subject& subject, Answer& answer) {
    constexpr std::uint32_t magic = 0x012CC16D;
    constexpr std::uint32_t noList = 0xFFFFFFFF;
    constexpr std::size_t entrySize = 24;
    ByteCursor cursor(subject.bytes);
    if (cursor.u32be() != magic) {
        return misfit(0, "the marker 012cc16d");
    }
    const auto owner = cursor.take(16);
    const auto group = cursor.take(16);
    const std::uint32_t count = cursor.u32be();
    const std::uint32_t flags = cursor.u32be();
    const std::size_t entries = count == noList ? 0 : count;
    if (cursor.failed() || cursor.remaining() != entries * entrySize) {
        return misfit(36, "a count, and so many entries of 24 bytes");
    }
    if (!isAllZero(owner)) {
        answer.text("Owner", macAccount(owner, answer));
    }
    if (!isAllZero(group)) {
        answer.text("Group", macAccount(group, answer));
    }
    answer.hex("List flags", flags, 8);
    for (std::size_t i = 0; i < entries; ++i) {
        const std::string who = macAccount(cursor.take(16), answer);
        const std::uint32_t entryFlags = cursor.u32be();
        const std::uint32_t rights = cursor.u32be();
        const std::uint32_t kind = entryFlags & 0xFU;
        std::string text = kind == 1 ? "allow " : kind == 2 ? "deny " : "kind " + std::to_string(kind) + " ";
        text += who + ": " + flagNames(rights, macRights) + " (" + hexNumber(rights, 8) + ")";
        if (const std::uint32_t further = entryFlags & ~0xFU; further != 0) {
            text += "; " + flagNames(further, macEntryFlags);
        }
        answer.add(
            "Entry", text,
            platform::Dictionary{
                {"flags", std::uint64_t{entryFlags}}, {"rights", std::uint64_t{rights}}, {"who", who}});
    }
    return {};
}

Outcome decodeMacAclText(const Subject& subject, Answer& answer) {
    const std::string_view text = textWithoutNul(subject.bytes);
    if (!isText(text)) {
        return misfit(0, "text in UTF-8");
    }
    std::vector<std::string_view> lines = piecesOf(text, '\n');
    if (lines.front() != "!#acl 1") {
        return misfit(0, "the line \"!#acl 1\"");
    }
    std::size_t count = 0;
    for (const std::string_view line : std::span(lines).subspan(1)) {
        if (line.empty()) {
            continue;
        }
        const std::vector<std::string_view> parts = piecesOf(line, ':');
        if (parts.size() != 6 || (parts[0] != "user" && parts[0] != "group")) {
            return misfit(
                static_cast<std::size_t>(line.data() - text.data()),
                "\"user|group:GUID:name:id:allow|deny:rights\"");
        }
        const std::vector<std::string_view> kinds = piecesOf(parts[4], ',');
        std::string words(kinds[0]);
        words.append(" ").append(parts[0]).append(" ").append(parts[2]);
        if (!parts[3].empty()) {
            words.append(" (").append(parts[3]).append(")");
        }
        words.append(": ").append(parts[5]);
        if (kinds.size() > 1) {
            words.append("; ").append(parts[4].substr(kinds[0].size() + 1));
        }
        answer.add("Entry", words, std::string(line));
        ++count;
    }
    answer.summary(
        "macOS: access control list of the file, kept by an archive or a copy; " + std::to_string(count)
        + (count == 1 ? " entry." : " entries."));
    return {};
}

} // namespace tolvane::attributes
