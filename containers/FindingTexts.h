#pragma once

#include "containers/Finding.h"

#include <string>
#include <string_view>

/// What a finding says, as texts for people. Names and paths in them are bytes as they were found.
namespace tolvane::containers {

/// The word for a kind: "bookmark", "alias", "url" or "origin".
std::string_view findingKindName(FindingKind kind);

/// The path or URL that a finding names, otherwise its name; "not readable" for one that cannot be read.
std::string targetText(const Finding& finding);

/// The name of the volume, otherwise its UUID; empty without either.
std::string volumeText(const Finding& finding);

/// When the item was created, with "local time" behind times without a zone; empty if that is not stored.
std::string createdText(const Finding& finding);

/// What the container's flags say of the item: "hidden at login, enabled"; empty without any.
std::string flagsText(const Finding& finding);

/// Local time in the form "2022-12-12T23:13:54", without a zone; empty for dates without a calendar date.
std::string localTimeText(const platform::Date& date);

/// What a kind of container (`FoundBookmarks::container`) is called in a sentence: "a list of the Dock".
std::string_view containerDescription(std::string_view container);

/// What it means that a bookmark and what stands beside it name different items.
inline constexpr std::string_view mismatchMeaning =
    "“Differs” marks a bookmark that names another item than the path or URL beside it. Programs follow one "
    "or "
    "the other: so a Dock tile starts something else than it shows, or a project loses its media.";

/// All that a finding says, a line for each fact: "Path: /Users/demo/note.txt". Line feeds in texts are
/// written as "⟨LF⟩".
std::string findingDetails(const Finding& finding);

} // namespace tolvane::containers
