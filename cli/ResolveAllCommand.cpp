#include "cli/ResolveAllCommand.h"

#include "cli/FileBookmarks.h"
#include "cli/JsonBookmark.h"
#include "cli/JsonWriter.h"
#include "cli/TerminalText.h"
#include "containers/FindingTexts.h"
#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/bookmark/format/BookmarkWriter.h"
#include "platform/bookmark/resolution/ComparedFacts.h"
#include "platform/values/Utf8.h"

#include <algorithm>

namespace tolvane::cli {

namespace {

/// In the form that services take; what cannot be read is left to them.
platform::Data bareForm(const platform::Data& bytes) {
    const auto structure = platform::readBookmarkOrAlias(bytes);
    return structure ? platform::bareBookmarkBytes(*structure) : bytes;
}

void writeJson(
    JsonWriter& json,
    const std::string& file,
    std::size_t index,
    const containers::Finding& finding,
    const resolver::BookmarkResolution& resolution,
    std::span<const platform::ComparedFact> compared,
    const std::string& reason) {
    json.beginObject().key("file").text(file).key("index").unsignedInteger(index);
    json.key("where").text(finding.where).key("kind").text(containers::findingKindName(finding.kind));
    json.key("resolution");
    if (reason.empty()) {
        writeResolutionJson(json, *resolution.resolved, resolution.volumePath.value_or(""), compared);
    } else {
        json.null();
    }
    json.key("reason");
    reason.empty() ? json.null() : json.text(reason);
    json.endObject();
}

} // namespace

resolver::StoredAndFound comparedWithItem(
    std::span<const std::byte> bookmark,
    const platform::ResolvedBookmark& resolved,
    const platform::Bookmarks& bookmarks) {
    return resolver::storedAndFound(
        bookmark, resolved, bookmarks,
        [](std::span<const std::byte> stored, std::span<const std::byte> found) {
            return platform::comparedFacts(stored, found);
        });
}

std::string reasonOfFailure(const resolver::BookmarkResolution& resolution) {
    const platform::Result<platform::ResolvedBookmark>& resolved = resolution.resolved;
    if (!resolved) {
        return resolved.error().localizedDescription();
    }
    if (!resolved->url) {
        return "The bookmark names no item.";
    }
    if (resolution.attributesFailure) {
        return "The item was found at " + resolved->url->path()
               + ", but cannot be accessed: " + resolution.attributesFailure->localizedDescription() + ".";
    }
    return {};
}

ExitStatus ResolveAllCommand::run(const std::string& file, bool asJson) {
    const auto say = [&](std::string_view sentence) {
        complain(
            sources_.standardError, std::string(file.empty() ? "''" : file).append(": ").append(sentence));
    };
    const auto found = bookmarksInFile(file, sources_);
    if (!found) {
        say(found.error().localizedDescription());
        return ExitStatus::failure;
    }
    const std::vector<containers::Finding>& findings = found->findings;
    for (std::size_t i = 0; i < findings.size() && !output_.failure(); ++i) {
        showProgress(std::to_string(i + 1) + " of " + std::to_string(findings.size()));
        if (!findings[i].bytes.empty()) {
            resolve(file, i, findings[i], asJson);
        }
    }
    showProgress("");
    output_.flush();
    for (const std::string& complaint : found->complaints) {
        say(complaint);
    }
    const std::size_t all = found_ + notFound_;
    std::string summary = std::to_string(all);
    summary.append(all == 1 ? " bookmark: " : " bookmarks: ").append(std::to_string(found_));
    summary.append(" found, ").append(std::to_string(stale_)).append(" of them stale; ");
    say(summary.append(std::to_string(notFound_)).append(" not found"));
    const bool isWhole = notFound_ == 0 && found->complaints.empty();
    return finished(output_, sources_.standardError, isWhole ? ExitStatus::success : ExitStatus::failure);
}

void ResolveAllCommand::resolve(
    const std::string& file, std::size_t index, const containers::Finding& finding, bool asJson) {
    const resolver::BookmarkResolution resolution = resolver::resolveBookmark(
        bareForm(finding.bytes), false, sources_.bookmarks, sources_.files.fileManager);
    const std::string reason = reasonOfFailure(resolution);
    ++(reason.empty() ? found_ : notFound_);
    const bool isStale = reason.empty() && resolution.resolved->isStale;
    stale_ += isStale ? 1U : 0U;
    showProgress("");
    if (asJson) {
        JsonWriter json(output_, output_.isTerminal());
        const auto compared =
            reason.empty() ? comparedWithItem(finding.bytes, *resolution.resolved, sources_.bookmarks).facts
                           : std::vector<platform::ComparedFact>();
        writeJson(json, file, index, finding, resolution, compared, reason);
        json.finish();
        output_.write("\n");
        return;
    }
    const std::string_view word = !reason.empty() ? "not found" : isStale ? "stale" : "found";
    const std::string text = reason.empty() ? platform::shownText(resolution.resolved->url->path()) : reason;
    std::string line = std::to_string(index);
    output_.write(line.append("\t").append(word).append("\t").append(terminalLine(text)).append("\n"));
}

void ResolveAllCommand::showProgress(const std::string& text) {
    if (!sources_.standardError.isTerminal() || (text.empty() && shownLength_ == 0)) {
        return;
    }
    // Written over the last one, which may be longer.
    const std::string blanks(shownLength_ - std::min(shownLength_, text.size()), ' ');
    static_cast<void>(sources_.standardError.write("\r" + text + blanks + (text.empty() ? "\r" : "")));
    shownLength_ = text.size();
}

} // namespace tolvane::cli
