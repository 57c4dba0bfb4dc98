#include "containers/Collector.h"

#include "platform/bookmark/format/AliasRecord.h"
#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/format/BookmarkReader.h"

#include <utility>

namespace tolvane::containers {

using namespace platform;

namespace {

constexpr std::size_t shortestBookmark = 48;
constexpr std::size_t mostComplaints = 100;

std::string_view textIn(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string atByte(std::string_view text, std::size_t offset) {
    return std::string(text) + " (byte " + std::to_string(offset) + ")";
}

std::size_t sizeOf(const Finding& finding) {
    std::size_t size = finding.where.size() + finding.bytes.size();
    for (const auto* text :
         {&finding.path, &finding.url, &finding.volumeName, &finding.name, &finding.neighbour}) {
        size += *text ? (*text)->size() : 0;
    }
    return size;
}

void addWarnings(Finding& finding, const std::vector<BookmarkWarning>& warnings) {
    for (const BookmarkWarning& warning : warnings) {
        finding.warnings.push_back(atByte(warning.text, warning.offset));
    }
}

std::string joinedPath(const std::vector<std::string>& components) {
    std::string path;
    for (const std::string& component : components) {
        path += "/" + component;
    }
    return path.empty() ? "/" : path;
}

void describeBookmark(Finding& finding) {
    finding.kind = FindingKind::bookmark;
    const auto structure = readBookmark(finding.bytes);
    if (!structure) {
        finding.isReadable = false;
        finding.warnings.push_back(structure.error().sentence());
        return;
    }
    finding.version = structure->header.version;
    const BookmarkContents contents = bookmarkContents(*structure);
    if (contents.pathComponents) {
        finding.path = joinedPath(*contents.pathComponents);
    }
    finding.url = contents.url;
    finding.volumeName = contents.volume.name;
    finding.volumeUUID = contents.volume.uuid;
    finding.created = contents.creationDate;
    finding.name = contents.displayName;
    addWarnings(finding, structure->warnings);
}

void describeAlias(Finding& finding) {
    finding.kind = FindingKind::alias;
    const auto record = readAliasRecord(finding.bytes);
    if (!record) {
        finding.isReadable = false;
        finding.warnings.push_back("Not a readable alias record: " + record.error().description());
        return;
    }
    finding.version = record->version;
    finding.path = record->path();
    finding.volumeName = record->volumeName;
    if (record->version == 2) {
        finding.createdLocal = record->creationDate.local;
    } else {
        finding.created = record->creationDate.utc;
    }
    if (!record->fileName.empty()) {
        finding.name = record->fileName;
    }
    addWarnings(finding, record->warnings);
}

} // namespace

bool isLikeBookmark(std::span<const std::byte> bytes) {
    const std::string_view text = textIn(bytes);
    using namespace std::string_view_literals;
    if (text.size() < shortestBookmark || !(text.starts_with("book") || text.starts_with("alis"))) {
        return false;
    }
    // The length or, in alias files, zeros, and then the version word or more letters.
    return text.substr(8, 4) == "mark" || text.substr(8, 3) == "\0\0\x04"sv
           || text.substr(8, 3) == "\0\0\x05"sv;
}

bool isLikeFinding(std::span<const std::byte> bytes) {
    return isLikeAliasRecord(bytes) || isLikeBookmark(bytes);
}

bool Collector::add(std::span<const std::byte> bytes, const std::string& where, const Label& label) {
    if (!isLikeFinding(bytes)) {
        return false;
    }
    if (isFull_) {
        return true;
    }
    Finding finding;
    finding.where = where;
    finding.bytes.assign(bytes.begin(), bytes.end());
    // An alias record of the application "alis" can begin like a bookmark, but not be of its stated length.
    isLikeAliasRecord(bytes) ? describeAlias(finding) : describeBookmark(finding);
    if (label.name && !label.name->empty()) {
        finding.name = label.name;
    }
    finding.neighbour = label.neighbour;
    finding.flags = label.flags;
    if (finding.path && finding.neighbour) {
        finding.mismatch = namesAnotherItem(*finding.path, *finding.neighbour, composed_);
    }
    add(std::move(finding));
    return true;
}

void Collector::add(Finding finding) {
    if (isFull_) {
        return;
    }
    keptBytes_ += sizeOf(finding);
    findings_.push_back(std::move(finding));
    if (findings_.size() >= mostFindings || keptBytes_ >= mostBytes_) {
        isFull_ = true;
        complaints_.push_back(
            "Only the first " + std::to_string(findings_.size())
            + " findings are listed; what follows them was not searched.");
    }
}

void Collector::complain(std::string sentence) {
    if (complaints_.size() < mostComplaints && keptBytes_ < mostBytes_) {
        keptBytes_ += sentence.size();
        complaints_.push_back(std::move(sentence));
    }
}

} // namespace tolvane::containers
