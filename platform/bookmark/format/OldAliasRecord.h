#pragma once

#include "platform/values/Value.h"

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

/// The bytes of the "alis" resource with the number 0 in a resource fork, or else of the first one. Nothing
/// when the fork holds none or does not hang together. They lie within the fork, and what they hold is not
/// looked at. Takes one look at each entry of two lists that have at most 65,536 each.
std::optional<std::span<const std::byte>> aliasResourceInFork(std::span<const std::byte> fork);

/// The record in that resource; nothing when there is none, or it is not recognised.
std::optional<OldAliasRecord> oldAliasRecordInResourceFork(std::span<const std::byte> fork);

/// Bookmark data that holds an alias record and nothing else: bare, with the letters "alis". The record can
/// be any bytes below 4 GiB.
Data bookmarkOfAliasRecord(std::span<const std::byte> record);

} // namespace tolvane::platform
