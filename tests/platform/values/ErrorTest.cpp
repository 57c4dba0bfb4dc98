#include "platform/values/Error.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>

namespace tolvane::platform {
namespace {

TEST(Error, ofASystemCallHoldsTheSystemsMessageAloneAlsoWhenAnotherCallFails) {
    const std::string message = std::strerror(ENOENT);
    const Error error = posixError(ENOENT);
    EXPECT_NE(posixError(123'456).localizedDescription(), message);
    EXPECT_EQ(error.domain, "NSPOSIXErrorDomain");
    EXPECT_EQ(error.code, ENOENT);
    EXPECT_EQ(error.userInfo, (Dictionary{{"NSLocalizedDescriptionKey", Value(message)}}));
    EXPECT_EQ(error.localizedDescription(), message);
}

TEST(Error, describesItselfByDomainAndCodeWithoutAMessage) {
    EXPECT_EQ((Error{"NSCocoaErrorDomain", 260, {}}).localizedDescription(), "NSCocoaErrorDomain error 260");
    EXPECT_EQ((Error{"Some", -1, {{"Other", 1}}}).localizedDescription(), "Some error -1");
    const Error withNumber{"Some", 7, {{std::string(NSLocalizedDescriptionKey), 1}}};
    EXPECT_EQ(withNumber.localizedDescription(), "Some error 7");
}

TEST(Error, ofTheCocoaDomainHoldsItsSentenceAlone) {
    const Error error = cocoaError(NSFileReadCorruptFileError, "This is no bookmark.");
    EXPECT_EQ(error.domain, "NSCocoaErrorDomain");
    EXPECT_EQ(error.code, 259);
    EXPECT_EQ(error.userInfo, (Dictionary{{"NSLocalizedDescriptionKey", Value("This is no bookmark.")}}));
}

} // namespace
} // namespace tolvane::platform
