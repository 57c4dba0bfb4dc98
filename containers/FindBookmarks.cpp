#include "containers/FindBookmarks.h"

#include "containers/Collector.h"
#include "containers/FolderSettings.h"
#include "containers/Gunzip.h"
#include "containers/PropertyListWalk.h"
#include "containers/TextRuns.h"
#include "containers/XmlWalk.h"
#include "platform/appledouble/AppleDouble.h"
#include "platform/appledouble/ResourceFork.h"
#include "platform/bookmark/format/AliasRecord.h"
#include "platform/propertylist/PropertyList.h"
#include "platform/values/ByteCursor.h"
#include "platform/values/Utf16Text.h"

#include <algorithm>
#include <map>

namespace tolvane::containers {

using namespace platform;

namespace {

std::string_view asText(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string atByteIn(std::string_view what, std::string_view expected, std::size_t offset) {
    return std::string(what) + " cannot be read: expected " + std::string(expected) + " at byte "
           + std::to_string(offset) + ".";
}

bool isLikePropertyList(std::span<const std::byte> bytes) {
    const std::string_view text = asText(bytes);
    return text.starts_with("bplist") || isLikeXmlList(text);
}

/// Where an extended attribute, a resource or another value may be a list itself.
void collectFromValue(std::span<const std::byte> value, const std::string& where, Collector& collector) {
    if (!collector.add(value, where) && isLikePropertyList(value)) {
        collectFromPropertyList(value, where, collector);
    }
}

/// The parts of a file, which could be searched any number of times if they overlapped.
class Parts {
public:
    Parts(std::span<const std::byte> whole, Collector& collector)
        : left_(whole.size())
        , collector_(collector) {}

    /// False, with a complaint, once they have more bytes together than the whole.
    bool take(std::span<const std::byte> part) {
        if (part.size() > left_) {
            collector_.complain("Parts of the file overlap; what follows them was not searched.");
            return false;
        }
        left_ -= part.size();
        return true;
    }

private:
    std::size_t left_;
    Collector& collector_;
};

void collectFromResources(std::span<const std::byte> bytes, const std::string& where, Collector& collector) {
    const auto fork = readResourceFork(bytes);
    if (!fork) {
        collector.complain(atByteIn("The resource fork", fork.error().expected, fork.error().offset));
        return;
    }
    Parts parts(bytes, collector);
    for (const ForkResource& resource : fork->resources) {
        if (!parts.take(resource.bytes)) {
            return;
        }
        const std::string step = where + "/" + resource.typeText() + " " + std::to_string(resource.number);
        Label label;
        if (resource.name) {
            label.name = resource.nameText();
        }
        if (resource.type == resourceType("url ")) {
            Finding finding;
            finding.kind = FindingKind::url;
            finding.where = step;
            finding.url = asText(resource.bytes);
            collector.add(std::move(finding));
        } else if (!collector.add(resource.bytes, step, label)) {
            collectFromValue(resource.bytes, step, collector);
        }
    }
}

void collectFromCompanion(std::span<const std::byte> bytes, Collector& collector) {
    const auto file = readAppleDouble(bytes);
    if (!file) {
        collector.complain(atByteIn("The AppleDouble file", file.error().expected, file.error().offset));
        return;
    }
    if (const auto* const fork = file->entry(apple_double_entry::resourceFork)) {
        collectFromResources(fork->bytes, "/resources", collector);
    }
    if (const auto* const data = file->entry(apple_double_entry::dataFork)) {
        collectFromValue(data->bytes, "/data", collector);
    }
    const auto block = readAppleDoubleAttributes(*file, bytes);
    if (!block) {
        collector.complain(atByteIn("The attributes", block.error().expected, block.error().offset));
        return;
    }
    Parts parts(bytes, collector);
    for (const AppleDoubleAttribute& attribute : block->attributes) {
        if (!parts.take(attribute.value)) {
            return;
        }
        collectFromValue(attribute.value, "/attributes/" + std::string(attribute.name), collector);
    }
}

/// The Finder cuts a bookmark after 1,500 bytes and keeps the rest in a second record.
void collectBookmarkOf(
    const std::string& name,
    std::span<const std::byte> first,
    const FolderSetting* rest,
    Collector& collector) {
    if (!isLikeBookmark(first) || collector.isFull()) {
        return;
    }
    Data bytes(first.begin(), first.end());
    if (rest != nullptr) {
        bytes.insert(bytes.end(), rest->value.begin(), rest->value.end());
    }
    collector.add(bytes, name + (rest != nullptr ? "/pBBk+pBB0" : "/pBBk"));
}

void collectOrigin(
    const std::string& name, const FolderSetting& folder, const FolderSetting* item, Collector& collector) {
    Finding finding;
    finding.kind = FindingKind::origin;
    finding.where = name + "/ptbL";
    finding.path = textOfBigEndianUtf16(folder.value);
    finding.neighbour = name;
    if (item != nullptr) {
        finding.name = textOfBigEndianUtf16(item->value);
        if (!finding.path->empty() && !finding.path->ends_with('/')) {
            *finding.path += '/';
        }
        *finding.path += *finding.name;
    }
    collector.add(std::move(finding));
}

void collectFromSettings(std::span<const std::byte> bytes, Collector& collector) {
    const auto settings = readFolderSettings(bytes);
    if (!settings) {
        collector.complain(
            atByteIn("The settings of a folder", settings.error().expected, settings.error().offset));
        return;
    }
    std::map<std::pair<std::string_view, std::string_view>, const FolderSetting*> byName;
    for (const FolderSetting& setting : *settings) {
        byName.emplace(std::pair(std::string_view(setting.name), std::string_view(setting.code)), &setting);
    }
    const auto find = [&](std::string_view name, std::string_view code) {
        const auto found = byName.find({name, code});
        return found == byName.end() ? nullptr : found->second;
    };
    for (const FolderSetting& setting : *settings) {
        if (setting.code == "pBBk") {
            collectBookmarkOf(setting.name, setting.value, find(setting.name, "pBB0"), collector);
        } else if (setting.code == "ptbL") {
            collectOrigin(setting.name, setting, find(setting.name, "ptbN"), collector);
        } else if (setting.type == "blob" && setting.code != "pBB0") {
            collectFromValue(setting.value, setting.name + "/" + setting.code, collector);
        }
    }
}

/// Like a bare fork: its data begin where Macs have them, and its map follows.
bool isLikeResourceFork(std::span<const std::byte> bytes) {
    constexpr std::uint32_t usualStart = 256;
    ByteCursor cursor(bytes);
    const std::uint64_t data = cursor.u32be();
    const std::uint64_t map = cursor.u32be();
    const std::uint64_t dataLength = cursor.u32be();
    const std::uint64_t mapLength = cursor.u32be();
    return !cursor.failed() && data == usualStart && map == data + dataLength && mapLength >= 30
           && map + mapLength <= bytes.size();
}

std::string_view aloneKind(std::span<const std::byte> bytes) {
    if (isLikeAliasRecord(bytes) || !isLikeBookmark(bytes)) {
        return "aliasRecord";
    }
    return asText(bytes.subspan(8, 4)) == "mark" ? "aliasFile" : "bookmark";
}

constexpr std::uint32_t appleDoubleMagic = 0x0005'1607;
constexpr std::uint32_t appleSingleMagic = 0x0005'1600;

bool isText(std::string_view front) {
    return !front.contains('\0');
}

/// A list in the oldest form. Other texts begin like one, too.
bool isTextList(std::span<const std::byte> bytes) {
    const std::string_view text = asText(bytes);
    return (text.starts_with('{') || text.starts_with('(')) && readPropertyList(bytes);
}

/// The kind of the container, whose findings are collected; empty if it is none.
std::string_view collect(std::span<const std::byte> bytes, Collector& collector) {
    const std::string_view text = asText(bytes);
    if (collector.add(bytes, "")) {
        return aloneKind(bytes);
    }
    if (isLikeFolderSettings(bytes)) {
        collectFromSettings(bytes, collector);
        return "folderSettings";
    }
    if (isLikePropertyList(bytes) || isTextList(bytes)) {
        const std::string_view kind = collectFromPropertyList(bytes, "", collector);
        return kind.empty() ? "propertyList" : kind;
    }
    const std::uint32_t magic = ByteCursor(bytes).u32be();
    if (magic == appleDoubleMagic || magic == appleSingleMagic) {
        collectFromCompanion(bytes, collector);
        return "appleDouble";
    }
    if (isLikeResourceFork(bytes)) {
        collectFromResources(bytes, "", collector);
        return "resourceFork";
    }
    if (!isText(text.substr(0, containerFrontLength))) {
        return {};
    }
    if (text.starts_with("<?xml") || text.starts_with("\xEF\xBB\xBF<?xml")) {
        collectFromXml(text, collector);
        return "xml";
    }
    collectFromText(text, "", collector);
    return "text";
}

} // namespace

bool mayBeContainer(std::span<const std::byte> front) {
    ByteCursor cursor(front);
    const std::uint32_t magic = cursor.u32be();
    cursor.take(2);
    const std::uint16_t version = cursor.u16be();
    const std::uint16_t kind = cursor.u16be();
    const bool mayBeAlias = !cursor.failed() && (version == 2 || version == 3) && kind <= 1;
    constexpr std::uint32_t forkStart = 256;
    return mayBeAlias || isLikeGzip(front) || magic == appleDoubleMagic || magic == appleSingleMagic
           || magic == forkStart || isLikeBookmark(front) || isLikeFolderSettings(front)
           || isLikePropertyList(front)
           || isText(asText(front.first(std::min(front.size(), containerFrontLength))));
}

namespace {

/// What a file that is not compressed holds.
std::optional<FoundBookmarks> findInBytes(std::span<const std::byte> bytes, const ComposedText& composed) {
    Collector collector(composed);
    const std::string_view container = collect(bytes, collector);
    // Any text and any document may hold a bookmark; without one they are no container.
    const bool needsFinding = container == "text" || container == "xml";
    if (container.empty()) {
        return std::nullopt;
    }
    if (needsFinding && collector.findings().empty()) {
        return std::nullopt;
    }
    return FoundBookmarks{container, std::move(collector.findings()), std::move(collector.complaints())};
}

/// What a compressed file holds, of which the front is inflated first: most hold no container. In one that
/// breaks off only a finding tells that it was one.
std::optional<FoundBookmarks> findInGzip(
    std::span<const std::byte> bytes, const ComposedText& composed, const BeforeManyBytes& beforeManyBytes) {
    const Gunzipped front = gunzipped(bytes, containerFrontLength);
    if (front.bytes.empty() || isLikeGzip(front.bytes) || !mayBeContainer(front.bytes)) {
        return std::nullopt;
    }
    Gunzipped inside = gunzipped(bytes, fewBytes);
    if (inside.bytes.size() == fewBytes && !inside.isWhole) {
        if (beforeManyBytes) {
            beforeManyBytes();
        }
        inside = {};
        inside = gunzipped(bytes);
    }
    auto found = findInBytes(inside.bytes, composed);
    if (inside.isWhole || !found) {
        return found;
    }
    found->complaints.push_back(
        inside.bytes.size() < mostInflatedBytes
            ? "The compressed data break off after " + std::to_string(inside.bytes.size()) + " bytes."
            : "More than 128 MiB of compressed data were left out.");
    return found;
}

} // namespace

std::optional<FoundBookmarks> findBookmarks(
    std::span<const std::byte> bytes, const ComposedText& composed, const BeforeManyBytes& beforeManyBytes) {
    if (bytes.empty() || bytes.size() > mostContainerBytes) {
        return std::nullopt;
    }
    return isLikeGzip(bytes) ? findInGzip(bytes, composed, beforeManyBytes) : findInBytes(bytes, composed);
}

FoundBookmarks findBookmarksInAttribute(
    std::string_view name, std::span<const std::byte> value, const ComposedText& composed) {
    Collector collector(composed);
    const std::string where = "/attributes/" + std::string(name);
    if (name.ends_with("ResourceFork") || isLikeResourceFork(value)) {
        collectFromResources(value, where, collector);
    } else {
        collectFromValue(value, where, collector);
    }
    return {"attributes", std::move(collector.findings()), std::move(collector.complaints())};
}

} // namespace tolvane::containers
