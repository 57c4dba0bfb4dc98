// Reads, writes and reads again; and makes a bookmark of the contents of another.
#include "fuzz/Fuzz.h"
#include "platform/bookmark/BookmarkComposer.h"
#include "platform/bookmark/BookmarkReader.h"
#include "platform/bookmark/BookmarkWriter.h"

#include <algorithm>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
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

    const platform::BookmarkContents contents = platform::bookmarkContents(*structure);
    if (const auto composed = platform::composeBookmark(contents)) {
        const auto made = platform::readBookmark(*composed);
        fuzz::require(made && made->warnings.empty(), "what is made can be read");
        const auto madeAgain = platform::composeBookmark(platform::bookmarkContents(*made));
        fuzz::require(madeAgain && *madeAgain == *composed, "what is made tells its contents");
    }
    return 0;
}
