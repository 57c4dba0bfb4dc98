#include "bench/Bookmarks.h"

#include "platform/bookmark/format/BookmarkComposer.h"
#include "platform/bookmark/format/BookmarkHeader.h"
#include "platform/bookmark/format/SectionComposer.h"
#include "platform/values/ByteCursor.h"

#include <cstdint>
#include <utility>

namespace tolvane::bench {

using platform::Data;

namespace {

Data bookmarkOf(platform::SectionComposer& composer, std::vector<platform::BookmarkItem> items) {
    const Data section =
        composer.take(composer.addTable(platform::table_identifier::target, 0, std::move(items)));
    Data bytes;
    platform::appendBookmarkHeader(bytes, platform::BookmarkHeader(), section.size());
    platform::appendBytes(bytes, section);
    return bytes;
}

} // namespace

Data bookmarkOfPath(std::vector<std::string> components) {
    platform::BookmarkContents contents;
    contents.fileIDs.emplace();
    for (std::size_t i = 0; i < components.size(); ++i) {
        contents.fileIDs->push_back(static_cast<std::int64_t>(5'308'416 + i));
    }
    contents.pathComponents = std::move(components);
    contents.creationDate = platform::Date(700'000'000.5);
    contents.fileFlags = platform::BookmarkFlags{1, 15, 0};
    contents.volume.path = "/";
    contents.volume.url = "file:///";
    contents.volume.name = "Test Disk";
    contents.volume.uuid = "0A81F3B1-51D9-3335-B3E3-169C3640360D";
    contents.volume.capacity = 494'384'795'648;
    contents.volume.creationDate = platform::Date(600'000'000);
    return platform::composeBookmark(contents).value_or(Data());
}

Data withComponents(std::size_t count) {
    std::vector<std::string> components;
    components.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        components.push_back("component " + std::to_string(i));
    }
    return bookmarkOfPath(std::move(components));
}

Data withItems(std::size_t count) {
    platform::SectionComposer composer;
    std::vector<platform::BookmarkItem> items;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t name = composer.addString("name " + std::to_string(i));
        const std::uint32_t value = composer.addString("value " + std::to_string(i));
        items.push_back({platform::bookmark_key::namedBit | name, value, 0});
    }
    return bookmarkOf(composer, std::move(items));
}

Data withSharedValues(std::size_t count) {
    platform::SectionComposer composer;
    const std::uint32_t name = composer.addString("shared");
    const std::vector<std::uint32_t> elements(count, composer.addString("one text for all"));
    const std::uint32_t array = composer.addArray(elements);
    return bookmarkOf(composer, {{platform::bookmark_key::namedBit | name, array, 0}});
}

} // namespace tolvane::bench
