#pragma once

#include "details/DetailsTexts.h"
#include "inspect/SizeData.h"
#include "platform/services/Bookmarks.h"
#include "platform/services/URLResources.h"
#include "platform/services/UserSession.h"
#include "platform/values/Date.h"
#include "platform/values/URL.h"
#include "platform/values/Value.h"

#include <optional>
#include <string>

namespace tolvane::details {

/// What gathering needs of the platform besides the size record.
struct GatheringSources {
    const platform::URLResources& resources;
    const platform::Bookmarks& bookmarks;
    const platform::UserSession& session;
};

/// What one pass found out: the texts to be shown, and what they were made of besides the size record.
struct GatheredDetails {
    /// `inodeText` is a line to be added to what the field holds; every other text replaces its field's.
    DetailsTexts texts;
    /// Absent when the type was not asked for or could not be found.
    std::optional<std::string> typeIdentifier;
    /// Absent when no bookmark could be made.
    std::optional<platform::Data> bookmark;
    /// Where the bookmark leads; absent when it could not be resolved.
    std::optional<platform::URL> bookmarkURL;
    /// When the pass ended.
    platform::Date gathered;
};

/// One pass over a size record: first the sizes, then the attribute dictionary in its own order (with its
/// file type the type identifier), the file reference URL, the bookmark and its resolution, and the time.
///
/// Fatal errors: a size sum or difference that overflows, an attribute of the wrong kind, and no file
/// reference URL. Failures of the type, of the bookmark and of its resolution have fixed texts.
GatheredDetails gatherDetails(const inspect::SizeData& sizes, const GatheringSources& sources);

} // namespace tolvane::details
