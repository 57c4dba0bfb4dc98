#include "platform/services/URLResources.h"

#include <gtest/gtest.h>

#include <optional>

namespace tolvane::platform {
namespace {

TEST(URLResourceValues, readsEachKeyUnderItsOwnName) {
    const URLResourceValues read(Dictionary{
        {"NSURLFileSizeKey", std::int64_t{5}},
        {"NSURLTotalFileSizeKey", std::uint32_t{7}},
        {"NSURLTypeIdentifierKey", "public.data"}});
    EXPECT_EQ(read.fileSize(), 5);
    EXPECT_EQ(read.totalFileSize(), 7);
    EXPECT_EQ(read.typeIdentifier(), "public.data");
}

TEST(URLResourceValues, hasNothingForAbsentKeysAndValuesOfAnotherKind) {
    for (const Value& wrong :
         {Value("5"), Value(5.0), Value(true), Value(Null{}), Value(~std::uint64_t{0})}) {
        const URLResourceValues read(
            Dictionary{{"NSURLFileSizeKey", wrong}, {"NSURLTotalFileSizeKey", wrong}});
        EXPECT_EQ(read.fileSize(), std::nullopt);
        EXPECT_EQ(read.totalFileSize(), std::nullopt);
        EXPECT_EQ(read.typeIdentifier(), std::nullopt);
    }
    const URLResourceValues read(Dictionary{{"NSURLTypeIdentifierKey", 5}});
    EXPECT_EQ(read.fileSize(), std::nullopt);
    EXPECT_EQ(read.totalFileSize(), std::nullopt);
    EXPECT_EQ(read.typeIdentifier(), std::nullopt);
}

} // namespace
} // namespace tolvane::platform
