#pragma once

#include "platform/PropertyLists.h"

namespace tolvane::platform {

/// Property lists in XML and in the binary format, read by libplist; the older text format is not read. Lists
/// of unreasonable size (PropertyListBounds.h), or nested deeper than 512 levels, are refused.
///
/// Texts are as the list has them and may be no UTF-8; those of a binary list end at their first NUL. Whole
/// numbers are signed 64-bit ones; unsigned ones beyond turn negative. An identifier of the keyed archives is
/// told as its number. Where a key comes twice the last counts.
class QtPropertyLists final : public PropertyLists {
public:
    Result<Value> propertyListWithData(std::span<const std::byte> data) const override;
};

} // namespace tolvane::platform
