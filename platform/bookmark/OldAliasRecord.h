#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace tolvane::platform {

/// What can be told of an alias record, the form that aliases had before there were bookmarks. It lies in the
/// resource fork of old alias files, and as data in some bookmarks. It is recognised, no more.
struct OldAliasRecord {
    std::uint16_t version = 0; ///< 2 or 3.
    bool isFolder = false;

    /// The name of the target's volume, which version 2 has at a known place.
    std::optional<std::string> volumeName;

    /// "old alias record, version 2, volume X", with the name as it is.
    std::string description() const;

    friend bool operator==(const OldAliasRecord&, const OldAliasRecord&) = default;
};

/// The record that these bytes begin with. Nothing when they are too short for one, or for the size that it
/// tells, or when its version or kind is not known.
std::optional<OldAliasRecord> oldAliasRecord(std::span<const std::byte> bytes);

/// The record in a resource fork: that of the "alis" resource with the number 0, or else of the first one.
/// Nothing when the fork holds none or does not hang together. Takes one look at each entry of two lists that
/// have at most 65,536 each.
std::optional<OldAliasRecord> oldAliasRecordInResourceFork(std::span<const std::byte> fork);

} // namespace tolvane::platform
