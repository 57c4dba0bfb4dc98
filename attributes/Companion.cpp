#include "attributes/Companion.h"

#include "attributes/Decoders.h"
#include "attributes/Family.h"
#include "attributes/FinderInfo.h"
#include "attributes/Parsing.h"
#include "platform/appledouble/AppleDouble.h"
#include "platform/values/ByteCursor.h"
#include "platform/values/MacRoman.h"

#include <algorithm>
#include <array>

namespace tolvane::attributes {

namespace {

using platform::AppleDouble;
using platform::AppleDoubleEntry;
using platform::ByteCursor;

constexpr std::size_t finderSize = 32;

constexpr std::array<Named, 19> entryNames{
    {{1, "Data"},
     {2, "Resource fork"},
     {3, "Name"},
     {4, "Comment"},
     {5, "Icon"},
     {6, "Colour icon"},
     {7, "File information"},
     {8, "Dates"},
     {9, "Finder information"},
     {10, "Mac information"},
     {11, "ProDOS information"},
     {12, "MS-DOS attributes"},
     {13, "Short name"},
     {14, "AFP information"},
     {15, "AFP folder number"},
     {0x80444556, "Device"},
     {0x80494E4F, "Inode"},
     {0x8053594E, "Stamp"},
     {0x8053567E, "Netatalk's number"}}};

constexpr std::array<Flag, 7> afpBits{
    {{0x1, "invisible"},
     {0x4, "system"},
     {0x20, "read-only"},
     {0x40, "to back up"},
     {0x80, "not renamed"},
     {0x100, "not deleted"},
     {0x400, "not copied"}}};

bool hasContent(std::span<const std::byte> bytes) {
    return std::ranges::any_of(bytes, [](std::byte byte) { return byte != std::byte{0}; });
}

void addDates(std::span<const std::byte> bytes, Answer& answer) {
    static constexpr std::array<std::string_view, 4> names{"Created", "Modified", "Backup", "Read"};
    constexpr std::uint32_t none = 0x80000000;
    constexpr std::int64_t secondsTo2000 = 946'684'800;
    ByteCursor cursor(bytes);
    for (const std::string_view name : names) {
        const std::uint32_t time = cursor.u32be();
        if (!cursor.failed() && time != none) {
            answer.date(
                name, platform::Date::fromUnixTime(secondsTo2000 + static_cast<std::int32_t>(time), 0));
        }
    }
}

/// The fields of one part that is not an attribute.
void addEntry(const AppleDoubleEntry& entry, const Subject& subject, Answer& answer) {
    const std::string_view known = nameIn(entryNames, entry.identifier);
    const std::string name = known.empty() ? "Part " + hexNumber(entry.identifier) : std::string(known);
    ByteCursor cursor(entry.bytes);
    switch (entry.identifier) {
    case platform::apple_double_entry::finderInfo:
        if (entry.bytes.size() >= finderSize && hasContent(entry.bytes.first(finderSize))) {
            addFinderInfo(entry.bytes.first(finderSize), subject.questions.itemKind, answer);
        }
        break;
    case platform::apple_double_entry::dates:
        addDates(entry.bytes, answer);
        break;
    case platform::apple_double_entry::comment:
    case platform::apple_double_entry::realName:
    case 13:
        if (!entry.bytes.empty()) {
            answer.text(
                name, isText(textOf(entry.bytes)) ? std::string(textOf(entry.bytes))
                                                  : platform::textOfMacRoman(entry.bytes));
        }
        break;
    case platform::apple_double_entry::resourceFork:
        answer.number(name, entry.bytes.size(), "bytes");
        if (!entry.bytes.empty()) {
            addNested(answer, name, explainWithin(subject, "com.apple.ResourceFork", entry.bytes));
        }
        break;
    case 14:
        answer.flags(name, cursor.u32be(), afpBits, 8);
        break;
    case 15:
        answer.number(name, cursor.u32be());
        break;
    case 0x80444556:
    case 0x80494E4F:
    case 0x8053594E:
    case 0x8053567E:
        // In the byte order of the machine that wrote them.
        answer.number(name, cursor.littleEndian(std::min<std::size_t>(entry.bytes.size(), 8)));
        break;
    default:
        answer.bytes(name, entry.bytes);
    }
}

/// Calls the function with each attribute until their values are much longer than the file, since hostile
/// files may share one value among thousands. Whether all were visited.
bool forEachAttribute(
    const platform::AppleDoubleAttributes& block, std::size_t fileSize, const auto& function) {
    constexpr std::size_t mostGrowth = 4;
    std::size_t visited = 0;
    for (const platform::AppleDoubleAttribute& attribute : block.attributes) {
        visited += attribute.value.size();
        if (visited > fileSize * mostGrowth) {
            return false;
        }
        function(attribute);
    }
    return true;
}

std::string damageText(const platform::ForkFault& fault) {
    return std::string(fault.expected) + " was expected at byte " + std::to_string(fault.offset);
}

} // namespace

Outcome decodeAppleDouble(const Subject& subject, Answer& answer) {
    const auto file = platform::readAppleDouble(subject.bytes);
    if (!file) {
        return misfit(file.error().offset, std::string(file.error().expected));
    }
    const std::string_view filler(reinterpret_cast<const char*>(file->filler.data()), file->filler.size());
    const std::string_view system = filler.substr(0, filler.find('\0'));
    if (const std::string_view home = trimmed(system); !home.empty()) {
        answer.text("Written for", home);
    }
    for (const AppleDoubleEntry& entry : file->entries) {
        addEntry(entry, subject, answer);
    }
    const auto block = platform::readAppleDoubleAttributes(*file, subject.bytes);
    if (!block) {
        answer.note("The attributes are damaged: " + damageText(block.error()));
        return {};
    }
    const bool isAll = forEachAttribute(*block, subject.bytes.size(), [&](const auto& attribute) {
        if (subject.depth < deepestValue) {
            addNested(answer, attribute.name, explainWithin(subject, attribute.name, attribute.value));
        } else {
            answer.bytes(attribute.name, attribute.value);
        }
    });
    if (!isAll) {
        answer.note("The attributes share values; not all are shown");
    }
    return {};
}

std::optional<Companion> companionAttributes(std::span<const std::byte> bytes) {
    const auto file = platform::readAppleDouble(bytes);
    if (!file || file->form != platform::AppleDoubleForm::companion) {
        return std::nullopt;
    }
    Companion companion;
    if (const auto* const info = file->entry(platform::apple_double_entry::finderInfo);
        info != nullptr && info->bytes.size() >= finderSize && hasContent(info->bytes.first(finderSize))) {
        companion.attributes.push_back({"com.apple.FinderInfo", info->bytes.first(finderSize)});
    }
    if (const auto* const fork = file->entry(platform::apple_double_entry::resourceFork);
        fork != nullptr && !fork->bytes.empty()) {
        companion.attributes.push_back({"com.apple.ResourceFork", fork->bytes});
    }
    const auto block = platform::readAppleDoubleAttributes(*file, bytes);
    if (!block) {
        companion.damage = damageText(block.error());
        return companion;
    }
    const bool isAll = forEachAttribute(*block, bytes.size(), [&](const auto& attribute) {
        companion.attributes.push_back({std::string(attribute.name), attribute.value});
    });
    if (!isAll) {
        companion.damage = "the attributes share values; not all are shown";
    }
    return companion;
}

} // namespace tolvane::attributes
