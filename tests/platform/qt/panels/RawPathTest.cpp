#include "platform/qt/panels/RawPath.h"

#include "tests/support/TemporaryFolder.h"

#include <QDir>
#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace tolvane::tests {
namespace {

using platform::URL;

class RawPathTest : public testing::Test {
protected:
    static QString text(const std::string& utf8) { return QString::fromStdString(utf8); }

    std::optional<URL> item(const std::string& name) const {
        return platform::URLOfItemAtPath(text(folder.path(name)));
    }
    std::optional<URL> newItem(const std::string& name) const {
        return platform::URLForNewItemAtPath(text(folder.path(name)));
    }

    const TemporaryFolder folder;
};

TEST_F(RawPathTest, takesAPathThatIsThereAsItIs) {
    const std::string file = folder.file("caf\u00E9 \u2028.txt");
    EXPECT_EQ(platform::URLOfItemAtPath(text(file)), URL::fileURLWithPath(file));
    EXPECT_EQ(platform::URLOfItemAtPath(QStringLiteral("/")), URL::fileURLWithPath("/"));
    const std::string dangling = folder.symlink("dangling", "nowhere");
    EXPECT_EQ(platform::URLOfItemAtPath(text(dangling)), URL::fileURLWithPath(dangling));
}

TEST_F(RawPathTest, findsNamesThatAreNotUtf8AlongThePath) {
    folder.folder("d\xFFr");
    const std::string file = folder.file("d\xFFr/caf\xE9.txt");
    EXPECT_EQ(item("d\uFFFDr/caf\uFFFD.txt"), URL::fileURLWithPath(file));
    EXPECT_EQ(item("d\uFFFDr/other"), std::nullopt);
}

TEST_F(RawPathTest, findsNamesAsQtAndAsThisProgramShowsThem) {
    // A character broken off after two of its three bytes.
    const std::string file = folder.file("a\xE2\x82z");
    EXPECT_EQ(item("a\uFFFDz"), URL::fileURLWithPath(file));
    EXPECT_EQ(
        platform::URLOfItemAtPath(platform::qtPath(URL::fileURLWithPath(file))), URL::fileURLWithPath(file));
}

TEST_F(RawPathTest, doesNotGuessAmongNamesThatLookTheSame) {
    const std::string first = folder.file("a\xFE");
    folder.file("a\xFF");
    EXPECT_EQ(item("a\uFFFD"), std::nullopt);
    const std::string literal = folder.file("a\uFFFD");
    EXPECT_EQ(item("a\uFFFD"), URL::fileURLWithPath(literal))
        << "a name that is exactly this text needs no guessing";
}

TEST_F(RawPathTest, answersNothingWhereNoItemIs) {
    folder.file("file");
    EXPECT_EQ(item("absent"), std::nullopt);
    EXPECT_EQ(item("file/below"), std::nullopt);
    EXPECT_EQ(item(std::string(300, 'x')), std::nullopt);
    EXPECT_EQ(platform::URLOfItemAtPath(QString()), std::nullopt);
    EXPECT_EQ(platform::URLOfItemAtPath(QStringLiteral("relative")), std::nullopt);
    EXPECT_EQ(platform::URLOfItemAtPath(text(folder.path("file")) + QChar(u'\0')), std::nullopt);
    EXPECT_EQ(platform::URLOfItemAtPath(text(folder.path("file")) + QChar(0xD800)), std::nullopt);
}

TEST_F(RawPathTest, takesTheNameOfANewItemAsUtf8InAFolderThatIsThere) {
    const std::string inner = folder.folder("d\xFFr");
    folder.file("d\xFFr/n\xFF");
    EXPECT_EQ(newItem("d\uFFFDr/n\uFFFD"), URL::fileURLWithPath(inner + "/n\uFFFD"));
    EXPECT_EQ(platform::URLForNewItemAtPath(QStringLiteral("/new")), URL::fileURLWithPath("/new"));
}

TEST_F(RawPathTest, hasNoPlaceForANewItemWithoutAFolder) {
    folder.file("file");
    EXPECT_EQ(newItem("absent/new"), std::nullopt);
    EXPECT_EQ(newItem("file/new"), std::nullopt);
    EXPECT_EQ(newItem("ends in a slash/"), std::nullopt);
    EXPECT_EQ(platform::URLForNewItemAtPath(QStringLiteral("new")), std::nullopt);
}

TEST_F(RawPathTest, reportsWhatIsThere) {
    const auto dangling = URL::fileURLWithPath(folder.symlink("dangling", "nowhere"));
    EXPECT_TRUE(isThere(dangling));
    EXPECT_FALSE(isFolder(dangling));
    const auto leading = URL::fileURLWithPath(folder.symlink("leading", "."));
    EXPECT_TRUE(isFolder(leading));
    EXPECT_FALSE(isThere(URL::fileURLWithPath(folder.path("absent"))));
    EXPECT_FALSE(isFolder(URL::fileURLWithPath(folder.file("file"))));
}

TEST_F(RawPathTest, hasNoPathForOtherUrls) {
    EXPECT_EQ(platform::qtPath(*URL::fromText("https://example.com/a")), QString());
    EXPECT_EQ(platform::qtPath(*URL::fromText("file:///a%20b%C3%A9")), QStringLiteral("/a bé"));
}

TEST_F(RawPathTest, readsFieldTextAsANameInTheFolderOrFromTheRootOrHome) {
    EXPECT_EQ(platform::pathOfFieldText("/a b", "/in"), "/a b");
    EXPECT_EQ(platform::pathOfFieldText("~/a", "/in"), QDir::homePath() + "/a");
    EXPECT_EQ(platform::pathOfFieldText("name", "/in"), "/in/name");
    EXPECT_EQ(platform::pathOfFieldText("name", "/"), "/name");
    EXPECT_EQ(platform::pathOfFieldText("a/b", "/in"), "/in/a/b");
    EXPECT_EQ(platform::pathOfFieldText("./a", "/in"), "/in/a");
    EXPECT_EQ(platform::pathOfFieldText("../a", "/in"), "/in/../a");
    EXPECT_EQ(platform::pathOfFieldText("~name", "/in"), "/in/~name");
}

} // namespace
} // namespace tolvane::tests
