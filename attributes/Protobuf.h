#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tolvane::attributes {

/// A field of a message: a number, or bytes that are a text or another message.
struct ProtobufField {
    std::uint64_t number = 0;
    bool isNumber = true;
    std::uint64_t value = 0;
    std::span<const std::byte> bytes;
};

/// The fields of a message in their order; nothing if the bytes are none, or have kinds that are not used
/// today. The fields' bytes lie in `message`.
std::optional<std::vector<ProtobufField>> protobufFields(std::span<const std::byte> message);

} // namespace tolvane::attributes
