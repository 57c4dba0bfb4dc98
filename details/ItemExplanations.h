#pragma once

#include "attributes/Explanation.h"
#include "attributes/StatusFactsInWords.h"
#include "attributes/StoredChecksum.h"
#include "inspect/SizeData.h"
#include "platform/services/ExtendedAttributeCalls.h"
#include "platform/services/FileContents.h"
#include "platform/services/StatusFactSource.h"
#include "platform/values/Error.h"
#include "platform/values/URL.h"
#include "platform/values/Value.h"
#include "verification/VerifyChecksums.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::details {

/// What explaining an item needs of the system. The referenced objects outlive the work.
struct ExplanationSources {
    inspect::FileSources files;
    const platform::FileContents& contents;
    /// The names of accounts; without it they have none.
    std::function<std::optional<std::string>(attributes::AccountKind kind, std::uint32_t number)>
        accountName = {};
    /// Without it there are no facts.
    const platform::StatusFactSource* facts = nullptr;
    /// The attributes of symbolic links themselves; without it only targets have some.
    const platform::ExtendedAttributeCalls* linkAttributes = nullptr;
};

/// An attribute as it is stored.
struct StoredAttribute {
    std::string name;
    platform::Data value;
};

/// An item's attributes, in the order of their names, and why some could not be read: one sentence each, with
/// the name of what it was.
struct StoredAttributes {
    std::vector<StoredAttribute> attributes;
    bool areOfLink = false; ///< Of a symbolic link itself, whose target is gone or cannot be reached.
    std::vector<std::string> failures;
};

/// Attributes in a companion file, which systems without extended attributes store beside an item.
struct StoredCompanion {
    std::string path; ///< Of the companion file; raw bytes.
    std::vector<StoredAttribute> attributes;
    attributes::Questions questions; ///< For explaining them.
};

/// The same, explained.
struct CompanionExplanations {
    std::string path; ///< Of the companion file; raw bytes.
    std::vector<attributes::Explanation> attributes;
};

/// What an item's extended attributes mean.
struct ItemExplanations {
    std::optional<attributes::StatusFactsInWords> facts;
    std::vector<attributes::Explanation> attributes; ///< In the order of their names.
    bool areOfLink = false;                          ///< As of `StoredAttributes`.
    std::optional<CompanionExplanations> companion;
    /// In the item's own attributes.
    std::vector<attributes::StoredChecksum> checksums;
    /// Absent unless `verifyChecksums` was called.
    std::optional<std::vector<verification::Verified>> verified;
    std::vector<std::string> failures; ///< As of `StoredAttributes`.
};

/// No companion file is read further than this.
inline constexpr std::size_t longestCompanion = std::size_t{16} << 20U;

/// The attributes of an item whose attribute dictionary is at hand, read one by one where that has none.
StoredAttributes storedAttributes(
    const platform::URL& url, const platform::Dictionary& attributes, const ExplanationSources& sources);

/// What a caller knows for explaining the item's attributes.
attributes::Questions questionsAbout(
    const platform::Dictionary& attributes, const ExplanationSources& sources);

/// The facts next to the attributes; nothing where the system has none.
std::optional<attributes::StatusFactsInWords> explainFactsOf(
    const platform::URL& url, const StoredAttributes& stored, const ExplanationSources& sources);

/// What the companion file beside the item has, or the item itself if its name is that of one ("._name", or
/// in ".AppleDouble"). Only a regular file is opened. Failures are added.
std::optional<StoredCompanion> storedCompanion(
    const platform::URL& url,
    const platform::Dictionary& attributes,
    const ExplanationSources& sources,
    std::vector<std::string>& failures);

/// All of these for one item. The checksums are not verified.
ItemExplanations explainItem(
    const platform::URL& url, const platform::Dictionary& attributes, const ExplanationSources& sources);

/// Reads the item's content and compares it with its checksums. Those that do not fit and those that could
/// not be compared are failures too.
void verifyChecksums(
    ItemExplanations& explanations,
    const std::string& path,
    const platform::FileContents& contents,
    const verification::Progress& progress);

} // namespace tolvane::details
