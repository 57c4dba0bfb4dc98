#include "platform/qt/panels/PathField.h"

#include <QDir>
#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

using platform::pathOfFieldText;

TEST(PathField, readsTextAsANameInTheFolder) {
    EXPECT_EQ(pathOfFieldText("name", "/in"), "/in/name");
    EXPECT_EQ(pathOfFieldText("name", "/"), "/name");
    EXPECT_EQ(pathOfFieldText("a/b", "/in"), "/in/a/b");
    EXPECT_EQ(pathOfFieldText("./a", "/in"), "/in/a");
    EXPECT_EQ(pathOfFieldText("../a", "/in"), "/in/../a");
    EXPECT_EQ(pathOfFieldText("~name", "/in"), "/in/~name");
}

TEST(PathField, readsPathsFromTheRootAndFromHome) {
    EXPECT_EQ(pathOfFieldText("/a b", "/in"), "/a b");
    EXPECT_EQ(pathOfFieldText("~/a", "/in"), QDir::homePath() + "/a");
}

} // namespace
} // namespace tolvane::tests
