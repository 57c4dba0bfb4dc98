#include "containers/ContainerContents.h"

#include "containers/FindBookmarks.h"
#include "tests/support/MemoryFileContents.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace tolvane::containers {
namespace {

using platform::Data;

class ContainerContentsTest : public testing::Test {
protected:
    std::map<std::string, std::string> files;
    tests::MemoryFileContents contents{files};
};

TEST_F(ContainerContentsTest, areTheWholeFileWhereItMayBeAContainer) {
    const std::string text = "<plist>" + std::string(3 * containerFrontLength, ' ');
    files["/a"] = text;
    const auto bytes = containerContents("/a", contents);
    ASSERT_TRUE(bytes && *bytes);
    EXPECT_EQ((*bytes)->size(), text.size());
}

TEST_F(ContainerContentsTest, areNothingWhereItIsCertainlyNone) {
    files["/empty"] = "";
    files["/picture"] = std::string("\x89PNG\r\n\x1A\n\0\0\0\x0D", 12);
    for (const char* const path : {"/empty", "/picture"}) {
        const auto bytes = containerContents(path, contents);
        ASSERT_TRUE(bytes) << path;
        EXPECT_FALSE(*bytes) << path;
    }
}

TEST_F(ContainerContentsTest, areAnnouncedBeforeManyBytesAreRead) {
    files["/few"] = std::string(fewBytes, ' ');
    files["/many"] = std::string(fewBytes + 1, ' ');
    int announced = 0;
    const auto announce = [&announced] { ++announced; };
    EXPECT_TRUE(*containerContents("/few", contents, announce));
    EXPECT_EQ(announced, 0);
    EXPECT_TRUE(*containerContents("/many", contents, announce));
    EXPECT_EQ(announced, 1);
}

TEST_F(ContainerContentsTest, failWithTheSystemsError) {
    files["/closed"] = "text";
    contents.unreadable.insert("/closed");
    EXPECT_EQ(containerContents("/closed", contents).error().code, EACCES);
    EXPECT_EQ(containerContents("/missing", contents).error().code, ENOENT);
}

} // namespace
} // namespace tolvane::containers
