// Finds bookmarks in any bytes.
#include "containers/FindBookmarks.h"
#include "fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    const auto found = containers::findBookmarks(fuzz::bytesOf(data, size));
    if (!found) {
        return 0;
    }
    fuzz::require(!found->container.empty(), "a container has a kind");
    for (const containers::Finding& finding : found->findings) {
        fuzz::require(finding.isReadable || !finding.warnings.empty(), "what cannot be read says why");
        fuzz::require(!(finding.created && finding.createdLocal), "there is one date");
        fuzz::require(!finding.mismatch || finding.neighbour, "a mismatch is with a neighbour");
    }
    return 0;
}
