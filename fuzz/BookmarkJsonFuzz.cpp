// Writes readable bookmarks as JSON.
#include "cli/JsonBookmark.h"
#include "cli/JsonWriter.h"
#include "cli/Output.h"
#include "fuzz/Fuzz.h"
#include "fuzz/WrittenText.h"
#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/bookmark/resolution/ComparedFacts.h"
#include "platform/values/Utf8.h"

#include <nlohmann/json.hpp>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace {

using namespace tolvane;

/// A possible result of resolving, derived from the bookmark and its bytes.
platform::ResolvedBookmark anyResolved(const platform::BookmarkContents& contents, std::size_t any) {
    platform::ResolvedBookmark resolved;
    if (contents.pathComponents) {
        std::string path;
        for (const std::string& component : *contents.pathComponents) {
            path += "/" + component + (any % 5 == 0 ? "\xFF" : "");
        }
        resolved.url = platform::URL::fileURLWithPath(path.empty() ? "/" : path);
    }
    resolved.isStale = any % 2 == 0;
    resolved.match = {
        .volume = static_cast<platform::VolumeMatch>(any / 2 % 4),
        .item = static_cast<platform::ItemMatch>(any / 6 % 3),
        .storedNumber =
            contents.fileIDs && !contents.fileIDs->empty() ? contents.fileIDs->back() : std::nullopt,
        .actualNumber = any % 3 == 0 ? std::optional<std::int64_t>(any) : std::nullopt,
        .storedCreationDate = contents.creationDate,
        .actualCreationDate = any % 3 == 0 ? contents.creationDate : std::nullopt};
    return resolved;
}

void checkResolution(
    const platform::BookmarkContents& contents, const platform::ResolvedBookmark& resolved, bool ascii) {
    const std::string volumePath = contents.volume.path.value_or("");
    platform::BookmarkContents changed = contents;
    changed.volume.path = "/mnt";
    for (const platform::ComparedFact& fact : platform::comparedFacts(contents, contents)) {
        fuzz::require(fact.differs != true, "nothing differs from itself");
    }
    fuzz::WrittenText written;
    cli::Output output(written);
    cli::JsonWriter json(output, ascii);
    const auto compared = platform::comparedFacts(contents, changed);
    cli::writeResolutionJson(json, resolved, volumePath, compared);
    json.finish();
    output.flush();
    fuzz::requireJsonLine(written.text(), ascii);
    const auto read = nlohmann::json::parse(written.text(), nullptr, false);
    const std::string path = resolved.url ? resolved.url->path() : std::string();
    const bool isText = platform::isValidUtf8(path);
    fuzz::require(read.at("pathBytes").is_null() == isText, "bytes are told where they are no text");
    fuzz::require(!isText || read.at("path") == path, "a path is told as it is");
    fuzz::require(read.at("isStale") == resolved.isStale, "what is stale is told to be");
    fuzz::require(
        read.at("storedNumber").is_null() != resolved.match.storedNumber.has_value(), "a number is told");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto structure = platform::readBookmark(fuzz::bytesOf(data, size));
    if (!structure) {
        return 0;
    }
    const auto contents = platform::bookmarkContents(*structure);
    const auto any = std::hash<std::string_view>{}(fuzz::textOf(data, size)) % 1024;
    for (const bool ascii : {false, true}) {
        fuzz::WrittenText written;
        cli::Output output(written);
        cli::JsonWriter json(output, ascii);
        cli::writeBookmarkJson(json, *structure);
        json.finish();
        output.flush();
        fuzz::requireJsonLine(written.text(), ascii);
        fuzz::require(written.text().size() <= 256 * size + (16U << 20U), "the text has its limit");
        checkResolution(contents, anyResolved(contents, any), ascii);
        const auto read = nlohmann::json::parse(written.text(), nullptr, false);
        fuzz::require(read.at("tables").size() == structure->tables.size(), "every table is told");
        fuzz::require(read.at("warnings").size() == structure->warnings.size(), "every warning is told");
        for (std::size_t i = 0; i < structure->tables.size(); ++i) {
            fuzz::require(
                read.at("tables").at(i).at("items").size() == structure->tables[i].items.size(),
                "every item is told");
        }
    }
    return 0;
}
