#include "platform/freedesktop/FileNamesAction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

using testing::ElementsAre;
using testing::Optional;

std::optional<std::vector<std::string>> namesIn(std::optional<std::vector<std::string>> texts) {
    return FileNamesPasteboard(std::move(texts)).fileNames();
}

TEST(FileNamesAction, isAsciiWhateverTheNames) {
    const auto action = fileNamesAction(
        {URL::fileURLWithPath("/a b"), URL::fileURLWithPath("/caf\xE9\n"), URL::fileURLWithPath("/\u00e9")});
    EXPECT_EQ(action.name, "show-file-names");
    EXPECT_THAT(action.texts, Optional(ElementsAre("file:///a%20b", "file:///caf%E9%0A", "file:///%C3%A9")));
}

TEST(FileNamesAction, bringsTheNamesBack) {
    const auto action = fileNamesAction(
        {URL::fileURLWithPath("/a b%20"), URL::fileURLWithPath("/-x\n\u202e"), URL::fileURLWithPath("/x/")});
    EXPECT_THAT(namesIn(action.texts), Optional(ElementsAre("/a b%20", "/-x\n\u202e", "/x/")));
}

TEST(FileNamesPasteboard, showsInvalidUtf8AsReplacementCharacters) {
    EXPECT_THAT(namesIn({{"file:///caf%E9", "/raw\xFF"}}), Optional(ElementsAre("/caf\uFFFD", "/raw\uFFFD")));
}

TEST(FileNamesPasteboard, leavesOtherTextsAsTheyCame) {
    const std::vector<std::string> texts{
        "/plain%20path", "relative",    "",         "file:relative", "file://elsewhere/a",
        "file:///a%00",  "file:///a%4", "http://x", "FILE:",         "  /a  "};
    EXPECT_EQ(namesIn(texts), texts);
}

TEST(FileNamesPasteboard, distinguishesAnEmptyListFromNone) {
    EXPECT_EQ(namesIn(std::nullopt), std::nullopt);
    EXPECT_THAT(namesIn(std::vector<std::string>()), Optional(testing::IsEmpty()));
}

} // namespace
} // namespace tolvane::platform
