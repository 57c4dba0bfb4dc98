#include "cli/FileBookmarks.h"

#include "cli/Names.h"
#include "containers/ContainerContents.h"
#include "containers/FindingTexts.h"
#include "inspect/ExtendedAttributes.h"

#include <algorithm>
#include <iterator>

namespace tolvane::cli {

using platform::Data;
using platform::Result;

namespace {

std::unexpected<platform::Error> failureWith(std::string_view sentence) {
    return std::unexpected(platform::cocoaError(platform::NSFileReadUnknownError, sentence));
}

/// Attributes of more bytes hold something else.
constexpr std::int64_t longestSearched = std::int64_t{16} << 20U;

Result<Data> attributeValue(
    const std::string& path, const std::string& name, const platform::ExtendedAttributeCalls& calls) {
    const auto size = inspect::xattrValueSize(path.c_str(), name, calls);
    if (!size) {
        return std::unexpected(size.error());
    }
    Data value(static_cast<std::size_t>(std::clamp<std::int64_t>(*size, 0, longestSearched)));
    if (value.empty()) {
        return value;
    }
    const auto length = calls.getxattr(path.c_str(), name.c_str(), value);
    if (!length) {
        return std::unexpected(platform::posixError(length.error()));
    }
    value.resize(std::min(value.size(), static_cast<std::size_t>(*length)));
    return value;
}

/// Adds what the file's attributes hold. Volumes without attributes have none; a name that goes meanwhile is
/// as one that was not there.
void searchAttributes(
    const std::string& path,
    const ProgramSources& sources,
    std::optional<containers::FoundBookmarks>& found) {
    const platform::ExtendedAttributeCalls& calls = sources.files.extendedAttributes;
    const auto names = inspect::xattrNames(path.c_str(), calls);
    for (const std::string& name : names.value_or(std::vector<std::string>())) {
        const auto value = attributeValue(path, name, calls);
        if (!value) {
            continue;
        }
        auto more = containers::findBookmarksInAttribute(name, *value, sources.composedText);
        if (more.findings.empty() && more.complaints.empty()) {
            continue;
        }
        if (!found) {
            found = containers::FoundBookmarks{more.container, {}, {}};
        }
        std::ranges::move(more.findings, std::back_inserter(found->findings));
        std::ranges::move(more.complaints, std::back_inserter(found->complaints));
    }
}

} // namespace

Result<std::optional<containers::FoundBookmarks>> searchFile(
    const std::string& path, const ProgramSources& sources) {
    const Result<std::optional<Data>> bytes = containers::containerContents(path, sources.contents);
    if (!bytes) {
        return std::unexpected(bytes.error());
    }
    auto found = *bytes ? containers::findBookmarks(**bytes, sources.composedText) : std::nullopt;
    searchAttributes(path, sources, found);
    return found;
}

Result<containers::FoundBookmarks> bookmarksInFile(const std::string& name, const ProgramSources& sources) {
    const auto url = urlOfName(name, sources.currentFolder());
    if (!url) {
        return std::unexpected(url.error());
    }
    auto searched = searchFile(url->path(), sources);
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
