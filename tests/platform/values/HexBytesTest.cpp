#include "platform/values/HexBytes.h"

#include <gtest/gtest.h>

namespace tolvane::platform {
namespace {

TEST(HexBytes, appendsTwoLowerCaseDigitsForEach) {
    const std::array bytes{
        std::byte{0x00}, std::byte{0x0A}, std::byte{0x9F}, std::byte{0xF0}, std::byte{0xFF}};
    std::string text = "<";
    appendHexBytes(text, bytes);
    EXPECT_EQ(text, "<000a9ff0ff");
    appendHexBytes(text, {});
    EXPECT_EQ(text, "<000a9ff0ff");
}

} // namespace
} // namespace tolvane::platform
