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

/// Local time in the form "2022-12-12T23:13:54", without a zone; empty for dates without a calendar date.
std::string localTimeText(const platform::Date& date);

} // namespace tolvane::containers
