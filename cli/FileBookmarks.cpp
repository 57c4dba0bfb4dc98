#include "cli/FileBookmarks.h"

#include "cli/Names.h"
#include "containers/FindingTexts.h"
#include "resolver/FileSearch.h"

namespace tolvane::cli {

using platform::Data;
using platform::Result;

namespace {

std::unexpected<platform::Error> failureWith(std::string_view sentence) {
    return std::unexpected(platform::cocoaError(platform::NSFileReadUnknownError, sentence));
}

} // namespace

resolver::FileSearchSources fileSearchSources(const ProgramSources& sources) {
    return {sources.contents, sources.files.extendedAttributes, sources.composedText};
}

Result<containers::FoundBookmarks> bookmarksInFile(const std::string& name, const ProgramSources& sources) {
    const auto url = urlOfName(name, sources.currentFolder());
    if (!url) {
        return std::unexpected(url.error());
    }
    auto searched = resolver::searchFile(url->path(), fileSearchSources(sources));
    if (!searched) {
        return std::unexpected(searched.error());
    }
    auto& found = *searched;
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
            + std::string(containers::findingKindName(finding.kind)));
    }
    return finding.bytes;
}

} // namespace tolvane::cli
