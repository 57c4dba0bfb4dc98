#include "platform/CocoaError.h"

#include <gtest/gtest.h>

namespace tolvane::platform {
namespace {

TEST(CocoaError, saysItsSentence) {
    const Error error = cocoaError(NSFileReadCorruptFileError, "This is no bookmark.");
    EXPECT_EQ(error.domain, NSCocoaErrorDomain);
    EXPECT_EQ(error.code, 259);
    EXPECT_EQ(error.localizedDescription(), "This is no bookmark.");
    EXPECT_EQ(error.userInfo.size(), 1U);
}

} // namespace
} // namespace tolvane::platform
