// Reading property lists in tests.
#pragma once

#include "platform/propertylist/PropertyList.h"
#include "platform/values/Description.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <expected>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::platform {

inline void PrintTo(const PropertyListFault& fault, std::ostream* out) {
    *out << "expected " << fault.expected << " at byte " << fault.offset;
}

} // namespace tolvane::platform

namespace tolvane::tests {

inline std::expected<platform::PropertyList, platform::PropertyListFault> readList(std::string_view bytes) {
    return platform::readPropertyList(std::as_bytes(std::span(bytes)));
}

/// The value of bytes that are a list of this form.
inline platform::Value listValue(
    std::string_view bytes, platform::PropertyListForm form = platform::PropertyListForm::xml) {
    const auto list = readList(bytes);
    if (!list) {
        ADD_FAILURE() << testing::PrintToString(list.error()) << " of " << bytes.substr(0, 200);
        return {};
    }
    EXPECT_EQ(list->form, form) << bytes.substr(0, 200);
    return list->value;
}

/// The fault of bytes that are not a list.
inline platform::PropertyListFault listFault(std::string_view bytes) {
    const auto list = readList(bytes);
    if (list) {
        ADD_FAILURE() << "is a list: " << bytes.substr(0, 200);
        return {};
    }
    return list.error();
}

inline std::string copiesOf(std::string_view text, std::size_t times) {
    std::string result;
    for (std::size_t i = 0; i < times; ++i) {
        result += text;
    }
    return result;
}

} // namespace tolvane::tests
