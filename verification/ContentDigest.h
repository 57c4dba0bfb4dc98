#pragma once

#include "platform/values/Value.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>

namespace tolvane::verification {

/// Computes one checksum of bytes that come in pieces.
class ContentDigest {
public:
    ContentDigest() = default;
    ContentDigest(const ContentDigest&) = delete;
    ContentDigest& operator=(const ContentDigest&) = delete;
    virtual ~ContentDigest() = default;

    virtual void add(std::span<const std::byte> bytes) = 0;

    /// The checksum of all bytes, in the order in which its digits are written. Nothing may be added after
    /// it. Empty if the system's library failed.
    virtual platform::Data finish() = 0;
};

/// For "MD5", "SHA-1", "SHA-224", "SHA-256", "SHA-384", "SHA-512", "CRC-32", and "BLAKE2b" of 64 bytes; null
/// for another algorithm, another length, or one that the system's library does not permit.
std::unique_ptr<ContentDigest> digestFor(std::string_view algorithm, std::size_t length);

} // namespace tolvane::verification
