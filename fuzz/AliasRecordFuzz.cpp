// Parses any bytes as an alias record, and makes a bookmark of it.
#include "fuzz/Fuzz.h"
#include "platform/bookmark/description/AliasDescription.h"
#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/values/Utf8.h"

#include <algorithm>

namespace {

using namespace tolvane;

void check(const platform::AliasRecord& record, std::size_t size) {
    fuzz::require(record.version == 2 || record.version == 3, "a record has a known version");
    fuzz::require(record.length <= size, "a record lies within the bytes");
    std::size_t length = 0;
    for (const platform::AliasItem& item : record.items) {
        fuzz::require(item.offset + 4 + item.bytes.size() <= record.length, "a tag lies within its record");
        length += 4 + item.bytes.size();
    }
    fuzz::require(length <= record.length, "no byte belongs to two tags");
    const auto path = record.path();
    fuzz::require(!path || path->contains('/'), "a path has a slash");
    fuzz::require(record.diskImage.size() <= 1, "there is one disk image at most");
    for (const platform::AliasRecord& image : record.diskImage) {
        check(image, record.length);
    }
}

std::size_t linesOf(const platform::AliasRecord& record) {
    std::size_t lines = 3 + record.items.size() + record.warnings.size();
    for (const platform::AliasRecord& image : record.diskImage) {
        lines += 1 + linesOf(image);
    }
    return lines;
}

void checkContents(const platform::BookmarkContents& contents) {
    if (!contents.pathComponents) {
        return;
    }
    fuzz::require(
        contents.fileIDs && contents.fileIDs->size() == contents.pathComponents->size(),
        "each component has room for its number");
    fuzz::require(
        std::ranges::none_of(*contents.pathComponents, [](const auto& name) { return name.empty(); }),
        "no component is empty");
    fuzz::require(contents.volume.path || contents.volume.name, "a path lies on a volume");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = fuzz::bytesOf(data, size);
    const auto record = platform::readAliasRecord(bytes);
    if (!record) {
        fuzz::require(record.error().offset <= size, "a fault lies within the bytes");
        return 0;
    }
    check(*record, size);
    std::string text;
    platform::appendAliasDescription(text, *record);
    fuzz::require(platform::isValidUtf8(text), "a description is UTF-8");
    fuzz::require(
        static_cast<std::size_t>(std::ranges::count(text, '\n')) == linesOf(*record),
        "no value begins a line");
    checkContents(platform::contentsOfAliasRecord(*record));
    const auto structure = platform::readBookmark(platform::bookmarkOfAliasRecord(bytes));
    fuzz::require(structure.has_value(), "a bookmark made of a record can be read");
    fuzz::require(
        platform::aliasRecordIn(*structure).has_value(), "the record in a bookmark is that it was made of");
    return 0;
}
