// Reads, writes and reads bookmarks again, and composes one from the contents of another.
#include "fuzz/Fuzz.h"
#include "platform/bookmark/format/BookmarkComposer.h"
#include "platform/bookmark/format/BookmarkHeader.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/bookmark/format/BookmarkValues.h"
#include "platform/bookmark/format/BookmarkWriter.h"
#include "platform/values/Description.h"

#include <algorithm>
#include <cstddef>
#include <expected>

namespace {

using namespace tolvane;

/// Requires that a composed bookmark has the contents it was composed from.
void checkComposed(
    const std::expected<platform::Data, platform::BookmarkRefusal>& composed, auto composeAgain) {
    if (!composed) {
        return;
    }
    fuzz::require(
        platform::claimedBookmarkLength(*composed) == composed->size(), "what is made says its length");
    const auto made = platform::readBookmark(*composed);
    fuzz::require(made && made->warnings.empty(), "what is made can be read");
    const auto madeAgain = composeAgain(platform::bookmarkContents(*made));
    fuzz::require(madeAgain && *madeAgain == *composed, "what is made has its contents");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = fuzz::bytesOf(data, size);
    const auto structure = platform::readBookmark(bytes);
    if (!structure) {
        return 0;
    }
    fuzz::require(
        std::ranges::equal(platform::bookmarkBytes(*structure), bytes), "writing gives what was read");

    const platform::Data bare = platform::bareBookmarkBytes(*structure);
    const platform::Data aliasFile = platform::aliasFileBytes(*structure, platform::Date(0));
    for (const platform::Data& converted : {bare, aliasFile}) {
        const auto again = platform::readBookmark(converted);
        fuzz::require(again && again->section == structure->section, "the container leaves the data alone");
    }

    const auto bareStructure = platform::readBookmark(bare);
    fuzz::require(
        bareStructure && bareStructure->records.size() == structure->records.size(),
        "the container leaves the records alone");
    for (std::size_t i = 0; i < structure->records.size(); ++i) {
        const auto value = platform::bookmarkValue(*structure, structure->records[i]);
        const auto bareValue = platform::bookmarkValue(*bareStructure, bareStructure->records[i]);
        fuzz::require(
            platform::description(value) == platform::description(bareValue),
            "a record has the same value in every container");
    }
    platform::BookmarkContents contents = platform::bookmarkContents(*structure);
    checkComposed(platform::composeBookmark(contents), platform::composeBookmark);
    const platform::BookmarkContents inFile = platform::contentsForAliasFile(contents);
    const platform::Date written(static_cast<double>(size));
    const auto fileOf = [&](const platform::BookmarkContents& of) {
        return platform::composeAliasFile(of, written).value_or(platform::Data());
    };
    // Compared by their bytes, since a date can be NaN.
    fuzz::require(
        fileOf(platform::contentsForAliasFile(inFile)) == fileOf(inFile), "contents become a file's once");
    checkComposed(platform::composeAliasFile(inFile, written), [&](const platform::BookmarkContents& again) {
        return platform::composeAliasFile(again, written);
    });
    // The same item behind other volumes.
    if (!contents.rootVolume) {
        contents.rootVolume = contents.volume;
    }
    contents.volumesBetween.resize(size % 3, *contents.rootVolume);
    checkComposed(platform::composeBookmark(contents), platform::composeBookmark);
    return 0;
}
