#include "attributes/FinderInfo.h"

#include "attributes/Decoders.h"
#include "platform/values/ByteCursor.h"
#include "platform/values/MacRoman.h"

#include <algorithm>
#include <array>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

constexpr std::size_t finderInfoSize = 32;

constexpr std::array<Flag, 11> finderFlags{
    {{0x0001, "on the desktop"},
     {0x0010, "extension hidden"},
     {0x0040, "shared application"},
     {0x0080, "no startup code"},
     {0x0100, "seen by the Finder"},
     {0x0400, "custom icon"},
     {0x0800, "stationery"},
     {0x1000, "name locked"},
     {0x2000, "bundle"},
     {0x4000, "invisible"},
     {0x8000, "alias"}}};

constexpr std::array<Flag, 4> extendedFlags{
    {{0x8000, "others are invalid"},
     {0x0100, "custom badge"},
     {0x0080, "busy"},
     {0x0004, "routing information"}}};

struct KnownCode {
    std::string_view type;
    std::string_view creator;
    std::string_view meaning;
};

constexpr std::array<KnownCode, 6> knownCodes{
    {{"alis", "MACS", "alias file"},
     {"slnk", "rhap", "symbolic link"},
     {"clpt", "", "text clipping"},
     {"brok", "MACS", "interrupted download"},
     {"fdrp", "", "alias of a folder"},
     {"icon", "MACS", "icon of a folder"}}};

std::string_view meaningOf(std::string_view type, std::string_view creator) {
    for (const KnownCode& code : knownCodes) {
        if (code.type == type && (code.creator.empty() || code.creator == creator)) {
            return code.meaning;
        }
    }
    return {};
}

bool isCode(std::span<const std::byte> four) {
    return std::ranges::all_of(
               four,
               [](std::byte byte) {
                   const auto value = std::to_integer<unsigned>(byte);
                   return value >= 0x20 && value != 0x7F;
               })
           || std::ranges::all_of(four, [](std::byte byte) { return byte == std::byte{0}; });
}

bool isZero(std::span<const std::byte> bytes) {
    return std::ranges::all_of(bytes, [](std::byte byte) { return byte == std::byte{0}; });
}

void addCode(std::string_view name, std::span<const std::byte> bytes, Answer& answer) {
    const std::string code = platform::textOfMacRoman(bytes);
    if (code == "    ") {
        answer.add(name, "four spaces", code);
    } else if (!isZero(bytes)) {
        answer.text(name, code);
    }
}

/// The type and creator of a file, and what they mean.
std::string addCodes(std::span<const std::byte> bytes, Answer& answer) {
    const auto typeBytes = bytes.first(4);
    const auto creatorBytes = bytes.subspan(4, 4);
    const std::string type = platform::textOfMacRoman(typeBytes);
    const std::string creator = platform::textOfMacRoman(creatorBytes);
    if (creator == "pdos" && typeBytes[0] == std::byte{'p'}) {
        ByteCursor cursor(typeBytes);
        cursor.take(1);
        const std::uint8_t kind = cursor.u8();
        const std::uint16_t auxiliary = cursor.u16be();
        answer.hex("ProDOS type", kind, 2);
        answer.hex("ProDOS auxiliary type", auxiliary, 4);
        return "a ProDOS file of type " + hexNumber(kind, 2);
    }
    addCode("Type", typeBytes, answer);
    addCode("Creator", creatorBytes, answer);
    const std::string_view meaning = meaningOf(type, creator);
    if (!meaning.empty()) {
        answer.text("Kind", meaning);
    }
    return std::string(meaning);
}

void addWindow(ByteCursor& cursor, Answer& answer) {
    std::array<std::int64_t, 4> edges{};
    for (std::int64_t& edge : edges) {
        edge = static_cast<std::int16_t>(cursor.u16be());
    }
    if (edges != std::array<std::int64_t, 4>{}) {
        answer.add(
            "Window",
            "top " + std::to_string(edges[0]) + ", left " + std::to_string(edges[1]) + ", bottom "
                + std::to_string(edges[2]) + ", right " + std::to_string(edges[3]),
            platform::Array{edges[0], edges[1], edges[2], edges[3]});
    }
}

void addPlace(ByteCursor& cursor, std::string_view name, Answer& answer) {
    const std::int64_t down = static_cast<std::int16_t>(cursor.u16be());
    const std::int64_t across = static_cast<std::int16_t>(cursor.u16be());
    if (down != 0 || across != 0) {
        answer.add(
            name, std::to_string(across) + " across, " + std::to_string(down) + " down",
            platform::Array{across, down});
    }
}

} // namespace

std::string_view colorName(std::uint64_t number) {
    static constexpr std::array<std::string_view, 8> names{"none", "gray",   "green", "purple",
                                                           "blue", "yellow", "red",   "orange"};
    return number < names.size() ? names.at(number) : std::string_view();
}

std::string addFinderInfo(
    std::span<const std::byte> bytes, std::optional<platform::ItemKind> kind, Answer& answer) {
    const bool isKnown = kind && *kind != platform::ItemKind::unknown;
    const bool isFolder = isKnown ? *kind == platform::ItemKind::folder
                                  : !isCode(bytes.subspan(4, 4))
                                        || (!isCode(bytes.first(4)) && textOf(bytes.subspan(4, 4)) != "pdos");
    ByteCursor cursor(bytes);
    std::string gist;
    if (isFolder) {
        addWindow(cursor, answer);
    } else {
        gist = addCodes(bytes, answer);
        cursor.take(8);
    }
    const std::uint16_t flags = cursor.u16be();
    const std::uint64_t label = flags >> 1U & 7U;
    constexpr std::uint64_t labelBits = 0x000E;
    const std::string names = flagNames(flags & ~labelBits, finderFlags);
    answer.add("Flags", names + " (" + hexNumber(flags, 4) + ")", std::uint64_t{flags});
    answer.add("Label", std::string(colorName(label)) + " (" + std::to_string(label) + ")", label);
    addPlace(cursor, "Icon", answer);
    const std::uint16_t view = cursor.u16be();
    if (isFolder && view != 0) {
        answer.hex("View", view, 4);
    }
    if (isFolder) {
        addPlace(cursor, "Scrolled", answer);
    } else if (const std::uint32_t document = cursor.u32be(); document != 0) {
        answer.number("Document number", document);
    }
    if (const std::uint32_t added = cursor.u32be(); added != 0) {
        answer.date("Added", platform::Date::fromUnixTime(added, 0));
    }
    if (const std::uint16_t extended = cursor.u16be(); extended != 0) {
        answer.flags("Extended flags", extended, extendedFlags, 4);
    }
    cursor.take(2);
    if (const std::uint32_t putAway = cursor.u32be(); putAway != 0) {
        answer.number(isFolder ? "Put-away folder" : "Put-away folder or write generation", putAway);
    }
    const bool mayBeFolder = !isKnown && isZero(bytes.first(8));
    std::string text = "What the Finder keeps about a ";
    text += mayBeFolder ? "file or folder" : isFolder ? "folder" : "file";
    text += gist.empty() ? "" : ": " + gist;
    text += names == "none" ? "" : (gist.empty() ? ": " : ", ") + names;
    text += label == 0 ? ""
                       : std::string(gist.empty() && names == "none" ? ": " : ", ") + "label "
                             + std::string(colorName(label));
    return text + ".";
}

Outcome decodeFinderInfo(const Subject& subject, Answer& answer) {
    if (subject.bytes.size() != finderInfoSize) {
        return misfit(0, "32 bytes");
    }
    answer.summary(addFinderInfo(subject.bytes, subject.questions.itemKind, answer));
    return {};
}

} // namespace tolvane::attributes
