#include "cli/FileBookmarks.h"

#include "cli/FindCommand.h"
#include "cli/JsonFinding.h"
#include "cli/Names.h"

namespace tolvane::cli {

using platform::Data;
using platform::Result;

namespace {

std::unexpected<platform::Error> failureWith(std::string_view sentence) {
    return std::unexpected(platform::cocoaError(platform::NSFileReadUnknownError, sentence));
}

} // namespace

Result<containers::FoundBookmarks> bookmarksInFile(const std::string& name, const ProgramSources& sources) {
    const auto url = urlOfName(name, sources.currentFolder());
    if (!url) {
        return std::unexpected(url.error());
    }
    const Result<std::optional<Data>> bytes = containerContents(url->path(), sources.contents);
    if (!bytes) {
        return std::unexpected(bytes.error());
    }
    auto found = *bytes ? containers::findBookmarks(**bytes, sources.composedText) : std::nullopt;
    if (!found || (found->findings.empty() && found->complaints.empty())) {
        return failureWith("it contains no bookmark");
    }
    if (found->findings.empty()) {
        return failureWith(found->complaints.front());
    }
    return *std::move(found);
}

Result<Data> bookmarkNumbered(const containers::FoundBookmarks& found, std::size_t index) {
    if (index >= found.findings.size()) {
        return failureWith(
            "it has no bookmark with the number " + std::to_string(index) + "; the last one is "
            + std::to_string(found.findings.size() - 1));
    }
    const containers::Finding& finding = found.findings[index];
    if (finding.bytes.empty()) {
        return failureWith(
            "number " + std::to_string(index) + " is no bookmark; its kind is "
            + std::string(findingKindName(finding.kind)));
    }
    return finding.bytes;
}

} // namespace tolvane::cli
