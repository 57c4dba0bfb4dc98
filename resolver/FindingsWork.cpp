#include "resolver/FindingsWork.h"

#include "containers/FindingTexts.h"

#include <chrono>
#include <utility>

namespace tolvane::resolver {

using containers::Finding;
using containers::FoundBookmarks;

namespace {

FindingOutcome outcomeOf(const Finding& finding, const platform::Bookmarks& bookmarks) {
    const auto resolved = bookmarks.URLByResolvingBookmarkData(finding.bytes);
    if (!resolved) {
        return {.text = resolved.error().localizedDescription()};
    }
    if (!resolved->url) {
        return {.text = "The bookmark names no item."};
    }
    return {.isFound = true, .isStale = resolved->isStale, .text = resolved->url->path()};
}

} // namespace

std::expected<FoundBookmarks, std::string> findingsIn(
    const std::string& path, const FileSearchSources& sources) {
    const auto look = sources.contents.lookAtTarget(path);
    if (look && look->kind == platform::ItemKind::folder) {
        return std::unexpected("This is a folder. Bookmarks are found in one file at a time.");
    }
    if (look && look->kind != platform::ItemKind::regularFile) {
        return std::unexpected("This is no file that can be searched.");
    }
    auto searched = searchFile(path, sources);
    if (!searched) {
        return std::unexpected(
            "The file cannot be searched: " + searched.error().localizedDescription() + ".");
    }
    auto& found = *searched;
    if (!found) {
        return std::unexpected("This file is of no kind that contains bookmarks.");
    }
    if (found->findings.empty() && found->complaints.empty()) {
        return std::unexpected(
            "No bookmarks in this file, which is "
            + std::string(containers::containerDescription(found->container)) + ".");
    }
    return *std::move(found);
}

bool isResolvable(const Finding& finding) {
    return finding.isReadable && !finding.bytes.empty();
}

void resolveFindings(
    std::span<const Finding> findings,
    const platform::Bookmarks& bookmarks,
    const std::function<bool()>& isCancelled,
    const std::function<void(Outcomes outcomes)>& deliver) {
    constexpr std::chrono::milliseconds betweenDeliveries{100};
    auto delivered = std::chrono::steady_clock::now();
    Outcomes outcomes;
    for (std::size_t i = 0; i < findings.size() && !isCancelled(); ++i) {
        if (isResolvable(findings[i])) {
            outcomes.emplace_back(i, outcomeOf(findings[i], bookmarks));
        }
        if (std::chrono::steady_clock::now() - delivered >= betweenDeliveries) {
            deliver(std::exchange(outcomes, {}));
            delivered = std::chrono::steady_clock::now();
        }
    }
    deliver(std::move(outcomes));
}

} // namespace tolvane::resolver
