#include "tests/support/BookmarkCorpus.h"

#include "platform/bookmark/format/BookmarkHeader.h"
#include "platform/values/Base64.h"
#include "platform/values/ByteCursor.h"
#include "tests/support/PropertyListWriters.h"
#include "tests/support/ScriptedSources.h"
#include "tests/support/TemporaryFolder.h"

#include <span>
#include <utility>

namespace tolvane::tests {

std::string corpusPath(std::string_view name) {
    return TOLVANE_SOURCE_DIR "/tests/data/bookmarks/" + std::string(name);
}

std::string corpusText(std::string_view name) {
    return contentsOfFile(corpusPath(name));
}

platform::Data corpusData(std::string_view name) {
    return bytesOf(corpusText(name));
}

std::string base64Of(std::string_view bytes) {
    return platform::base64EncodedString(std::as_bytes(std::span(bytes)));
}

platform::Data bookmarkWithItems(
    platform::SectionComposer& composer, std::vector<platform::BookmarkItem> items) {
    const platform::Data section =
        composer.take(composer.addTable(platform::table_identifier::target, 0, std::move(items)));
    platform::Data bytes;
    platform::appendBookmarkHeader(bytes, platform::BookmarkHeader(), section.size());
    platform::appendBytes(bytes, section);
    return bytes;
}

std::string dockWith(const std::vector<std::string>& urls) {
    using platform::Dictionary;
    platform::Array tiles;
    for (const std::string& url : urls) {
        tiles.push_back(Dictionary{
            {"tile-data", Dictionary{
                              {"book", corpusData("note.bookmark")},
                              {"file-label", "Note"},
                              {"file-data", Dictionary{{"_CFURLString", url}}}}}});
    }
    return binaryPropertyList(Dictionary{{"persistent-apps", tiles}}).value();
}

} // namespace tolvane::tests
