// Reading property lists in tests.
#pragma once

#include "platform/propertylist/PropertyList.h"
#include "platform/values/Description.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <expected>
#include <limits>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform {

inline void PrintTo(const PropertyListFault& fault, std::ostream* out) {
    *out << "expected " << fault.expected << " at byte " << fault.offset;
}

} // namespace tolvane::platform

namespace tolvane::tests {

inline std::expected<platform::PropertyList, platform::PropertyListFault> readList(std::string_view bytes) {
    return platform::readPropertyList(std::as_bytes(std::span(bytes)));
}

/// The value of bytes that are a list of this form, as is expected here.
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

/// A list that cannot be read, and its fault.
struct FaultyList {
    std::string_view bytes;
    std::size_t offset;
    std::string_view expected;
};

inline void expectFaults(const std::vector<FaultyList>& lists) {
    for (const auto& [bytes, offset, expected] : lists) {
        EXPECT_EQ(listFault(bytes), (platform::PropertyListFault{offset, std::string(expected)}))
            << testing::PrintToString(bytes);
    }
}

/// Lists of one form with their values.
inline void expectValues(
    platform::PropertyListForm form, const std::vector<std::pair<std::string_view, platform::Value>>& lists) {
    for (const auto& [bytes, value] : lists) {
        EXPECT_EQ(listValue(bytes, form), value) << bytes;
    }
}

inline std::string copiesOf(std::string_view text, std::size_t times) {
    std::string result;
    for (std::size_t i = 0; i < times; ++i) {
        result += text;
    }
    return result;
}

} // namespace tolvane::tests
