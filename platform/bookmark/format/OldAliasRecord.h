#pragma once

#include "platform/values/Value.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace tolvane::platform {

/// The recognisable facts of an alias record, the form from before there were bookmarks. It is in the
/// resource fork of old alias files, and as data in some bookmarks.
struct OldAliasRecord {
    std::uint16_t version = 0; ///< 2 or 3.
    bool isFolder = false;

    /// The name of the target's volume, which version 2 has at a known place.
    std::optional<std::string> volumeName;

    /// "old alias record, version 2, volume X", with the name as it is.
    std::string description() const;

    friend bool operator==(const OldAliasRecord&, const OldAliasRecord&) = default;
};

/// The record at the front of the bytes. Nothing if they are too few for it or its stated size, or its
/// version or kind is unknown.
std::optional<OldAliasRecord> oldAliasRecord(std::span<const std::byte> bytes);

/// The bytes of the "alis" resource with the number 0 in a resource fork, otherwise of the first one, not
/// validated. Nothing if there is none or the fork is invalid. Looks once at each entry of two lists of at
/// most 65,536.
std::optional<std::span<const std::byte>> aliasResourceInFork(std::span<const std::byte> fork);

/// The record in that resource; nothing if there is none or it is unknown.
std::optional<OldAliasRecord> oldAliasRecordInResourceFork(std::span<const std::byte> fork);

/// Bare bookmark data with the letters "alis" that contains only this record, of any bytes below 4 GiB.
Data bookmarkOfAliasRecord(std::span<const std::byte> record);

} // namespace tolvane::platform
