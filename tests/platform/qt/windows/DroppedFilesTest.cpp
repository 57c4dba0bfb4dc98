#include "platform/qt/windows/MainWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> pathsIn(std::string_view list) {
    std::vector<std::string> paths;
    for (const URL& url : fileURLsInList(list)) {
        paths.push_back(url.path());
    }
    return paths;
}

TEST(DroppedFiles, areOneALineOfAnyBytes) {
    EXPECT_THAT(
        pathsIn("file:///a\r\nfile:///b%20c\r\n# why\r\n\r\nfile:///d"), ElementsAre("/a", "/b c", "/d"));
    EXPECT_THAT(pathsIn("file:///a\nfile:///b\n"), ElementsAre("/a", "/b"));
    EXPECT_THAT(pathsIn("file:///%FF%0A\r\n"), ElementsAre("/\xff\n"));
    EXPECT_THAT(pathsIn("file:///\xff\r\n"), ElementsAre("/\xff"));
}

TEST(DroppedFiles, areOnThisMachine) {
    EXPECT_THAT(pathsIn("https://example.org/a\nfile://elsewhere/a\nnonsense\nfile:///a%00b\n"), IsEmpty());
    EXPECT_THAT(pathsIn(""), IsEmpty());
    EXPECT_THAT(pathsIn("\r\n"), IsEmpty());
}

} // namespace
} // namespace tolvane::platform
