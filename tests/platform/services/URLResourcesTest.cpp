#include "platform/services/URLResources.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace tolvane::platform {
namespace {

Dictionary onlyEntry(std::string_view key, Value value) {
    Dictionary values;
    values.set(key, std::move(value));
    return values;
}

TEST(URLResourceValues, readsEachKeyUnderItsOwnName) {
    Dictionary values;
    values.set("NSURLFileSizeKey", std::int64_t{5});
    values.set("NSURLTotalFileSizeKey", std::uint32_t{7});
    values.set("NSURLTypeIdentifierKey", "public.data");
    const URLResourceValues read(values);
    EXPECT_EQ(read.fileSize(), 5);
    EXPECT_EQ(read.totalFileSize(), 7);
    EXPECT_EQ(read.typeIdentifier(), "public.data");
}

TEST(URLResourceValues, hasNothingForAbsentKeys) {
    const URLResourceValues read((Dictionary()));
    EXPECT_EQ(read.fileSize(), std::nullopt);
    EXPECT_EQ(read.totalFileSize(), std::nullopt);
    EXPECT_EQ(read.typeIdentifier(), std::nullopt);
}

TEST(URLResourceValues, takesAValueOfAnotherKindForAbsent) {
    for (const Value& wrong :
         {Value("5"), Value(5.0), Value(true), Value(Null{}), Value(~std::uint64_t{0})}) {
        EXPECT_EQ(URLResourceValues(onlyEntry(NSURLFileSizeKey, wrong)).fileSize(), std::nullopt);
        EXPECT_EQ(URLResourceValues(onlyEntry(NSURLTotalFileSizeKey, wrong)).totalFileSize(), std::nullopt);
    }
    EXPECT_EQ(URLResourceValues(onlyEntry(NSURLTypeIdentifierKey, 5)).typeIdentifier(), std::nullopt);
}

} // namespace
} // namespace tolvane::platform
