#include "attributes/Protobuf.h"

#include "platform/values/ByteCursor.h"

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

std::optional<std::uint64_t> takeVarint(ByteCursor& cursor) {
    std::uint64_t number = 0;
    for (unsigned shift = 0; shift < 64; shift += 7) {
        const std::uint8_t byte = cursor.u8();
        if (cursor.failed()) {
            return std::nullopt;
        }
        number |= std::uint64_t{byte & 0x7FU} << shift;
        if (byte < 0x80) {
            return number;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::vector<ProtobufField>> protobufFields(std::span<const std::byte> message) {
    enum Kind : std::uint8_t { varint = 0, fixed64 = 1, bytes = 2, fixed32 = 5 };
    std::vector<ProtobufField> fields;
    ByteCursor cursor(message);
    while (cursor.remaining() > 0) {
        const auto key = takeVarint(cursor);
        if (!key || *key >> 3U == 0) {
            return std::nullopt;
        }
        ProtobufField field{*key >> 3U, (*key & 7U) != bytes, 0, {}};
        switch (*key & 7U) {
        case varint:
        case bytes:
            if (const auto number = takeVarint(cursor)) {
                field.value = *number;
                break;
            }
            return std::nullopt;
        case fixed64:
            field.value = cursor.u64le();
            break;
        case fixed32:
            field.value = cursor.u32le();
            break;
        default:
            return std::nullopt;
        }
        if ((*key & 7U) == bytes) {
            field.bytes = cursor.take(field.value);
        }
        if (cursor.failed()) {
            return std::nullopt;
        }
        fields.push_back(field);
    }
    return fields;
}

} // namespace tolvane::attributes
