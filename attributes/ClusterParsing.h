/// What the records of cluster file systems share.
#pragma once

#include "attributes/Answer.h"
#include "attributes/Family.h"
#include "platform/values/ByteCursor.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace tolvane::attributes {

/// Whether exactly all bytes, so many, were read.
inline Outcome decodeExact(const platform::ByteCursor& cursor, std::size_t size) {
    if (cursor.failed() || cursor.remaining() != 0) {
        return misfit(cursor.failed() ? cursor.position() : size, std::to_string(size) + " bytes");
    }
    return {};
}

/// "[0x200000401:0x1:0x0]", as Lustre writes it.
inline std::string identifierText(std::uint64_t sequence, std::uint32_t object, std::uint32_t version) {
    return "[" + hexNumber(sequence) + ":" + hexNumber(object) + ":" + hexNumber(version) + "]";
}

} // namespace tolvane::attributes
