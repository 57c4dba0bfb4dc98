#include "platform/bookmark/BookmarkReader.h"

#include "platform/bookmark/BookmarkHeader.h"
#include "platform/bookmark/SectionReader.h"

namespace tolvane::platform {

std::expected<BookmarkStructure, BookmarkFault> readBookmark(std::span<const std::byte> bytes) {
    std::expected<ReadHeader, BookmarkFault> read = readBookmarkHeader(bytes);
    if (!read) {
        return std::unexpected(read.error());
    }
    BookmarkStructure structure;
    structure.header = std::move(read->header);
    structure.warnings = std::move(read->warnings);
    const std::span<const std::byte> rest = bytes.subspan(structure.header.size);
    const auto section = rest.first(read->sectionLength);
    const auto trailing = rest.subspan(read->sectionLength);
    structure.section.assign(section.begin(), section.end());
    structure.trailing.assign(trailing.begin(), trailing.end());
    if (!trailing.empty()) {
        structure.warnings.push_back({bytes.size() - trailing.size(), "bytes follow the bookmark"});
    }
    if (const auto fault = SectionReader(structure).read()) {
        return std::unexpected(*fault);
    }
    return structure;
}

} // namespace tolvane::platform
