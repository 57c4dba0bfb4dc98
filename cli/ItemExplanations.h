#pragma once

#include "attributes/Explanation.h"
#include "cli/Program.h"
#include "platform/values/Error.h"
#include "platform/values/URL.h"
#include "platform/values/Value.h"

#include <optional>
#include <string>
#include <vector>

namespace tolvane::cli {

/// Attributes in a companion file, which systems without extended attributes store beside an item.
struct CompanionExplanations {
    std::string path; ///< Of the companion file; raw bytes.
    std::vector<attributes::Explanation> attributes;
};

/// What an item's extended attributes mean.
struct ItemExplanations {
    std::vector<attributes::Explanation> attributes; ///< In the order of their names.
    std::optional<CompanionExplanations> companion;
    /// Why something could not be read, one sentence each, with the name of what it was.
    std::vector<std::string> failures;
};

/// No companion file is read further than this.
inline constexpr std::size_t longestCompanion = std::size_t{16} << 20U;

/// Explains the attributes of an item whose attribute dictionary is at hand. The item itself is opened only
/// if its name is that of a companion file ("._name", or in ".AppleDouble") and it is a regular file; else
/// the companion file beside it is, if there is one.
ItemExplanations explainItem(
    const platform::URL& url, const platform::Dictionary& attributes, const ProgramSources& sources);

} // namespace tolvane::cli
