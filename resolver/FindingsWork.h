#pragma once

#include "containers/FindBookmarks.h"
#include "platform/services/Bookmarks.h"
#include "resolver/FileSearch.h"
#include "resolver/FindingRows.h"

#include <cstddef>
#include <expected>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

/// What the window of found bookmarks has done on other threads.
namespace tolvane::resolver {

/// The findings in a file, or in a sentence why there are none.
std::expected<containers::FoundBookmarks, std::string> findingsIn(
    const std::string& path, const FileSearchSources& sources);

/// True for bookmarks and alias records that can be read.
bool isResolvable(const containers::Finding& finding);

/// What resolving gave, with the index of the finding.
using Outcomes = std::vector<std::pair<std::size_t, FindingOutcome>>;

/// Resolves all that are resolvable, in their order, until it is cancelled. `deliver` gets several outcomes
/// at a time, so that a table is painted no more often than a reader can follow; at the end the rest.
void resolveFindings(
    std::span<const containers::Finding> findings,
    const platform::Bookmarks& bookmarks,
    const std::function<bool()>& isCancelled,
    const std::function<void(Outcomes outcomes)>& deliver);

} // namespace tolvane::resolver
