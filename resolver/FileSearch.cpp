#include "resolver/FileSearch.h"

#include "containers/ContainerContents.h"
#include "inspect/ExtendedAttributes.h"

#include <algorithm>
#include <iterator>

namespace tolvane::resolver {

using platform::Data;
using platform::Result;

namespace {

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
    const FileSearchSources& sources,
    std::optional<containers::FoundBookmarks>& found) {
    const platform::ExtendedAttributeCalls& calls = sources.extendedAttributes;
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
    const std::string& path, const FileSearchSources& sources) {
    std::unique_lock<std::mutex> turn;
    const auto takeTurn = [&] {
        if (sources.manyBytes != nullptr && !turn) {
            turn = std::unique_lock(*sources.manyBytes);
        }
    };
    const Result<std::optional<Data>> bytes = containers::containerContents(path, sources.contents, takeTurn);
    if (!bytes) {
        return std::unexpected(bytes.error());
    }
    auto found = *bytes ? containers::findBookmarks(**bytes, sources.composedText, takeTurn) : std::nullopt;
    searchAttributes(path, sources, found);
    return found;
}

} // namespace tolvane::resolver
