#include "platform/qt/panels/RawPath.h"

#include "tests/support/TemporaryFolder.h"

#include <QDir>
#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace tolvane::tests {
namespace {

using platform::URL;

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

TEST(RawPath, takesAPathThatIsThereAsItIs) {
    const TemporaryFolder folder;
    const std::string file = folder.file("caf\u00E9 \u2028.txt");
    EXPECT_EQ(platform::URLOfItemAtPath(text(file)), URL::fileURLWithPath(file));
    EXPECT_EQ(platform::URLOfItemAtPath(QStringLiteral("/")), URL::fileURLWithPath("/"));
    const std::string dangling = folder.symlink("dangling", "nowhere");
    EXPECT_EQ(platform::URLOfItemAtPath(text(dangling)), URL::fileURLWithPath(dangling));
}

TEST(RawPath, findsNamesThatAreNoTextAlongThePath) {
    const TemporaryFolder folder;
    folder.folder("d\xFFr");
    const std::string file = folder.file("d\xFFr/caf\xE9.txt");
    EXPECT_EQ(
        platform::URLOfItemAtPath(text(folder.path("d\uFFFDr/caf\uFFFD.txt"))), URL::fileURLWithPath(file));
    EXPECT_EQ(platform::URLOfItemAtPath(text(folder.path("d\uFFFDr/other"))), std::nullopt);
}

TEST(RawPath, findsNamesAsQtAndAsThisProgramShowsThem) {
    const TemporaryFolder folder;
    // A character broken off after two of its three bytes.
    const std::string file = folder.file("a\xE2\x82z");
    EXPECT_EQ(platform::URLOfItemAtPath(text(folder.path("a\uFFFDz"))), URL::fileURLWithPath(file));
    EXPECT_EQ(
        platform::URLOfItemAtPath(platform::qtPath(URL::fileURLWithPath(file))), URL::fileURLWithPath(file));
}

TEST(RawPath, doesNotGuessAmongNamesThatLookTheSame) {
    const TemporaryFolder folder;
    const std::string first = folder.file("a\xFE");
    folder.file("a\xFF");
    EXPECT_EQ(platform::URLOfItemAtPath(text(folder.path("a\uFFFD"))), std::nullopt);
    const std::string literal = folder.file("a\uFFFD");
    EXPECT_EQ(platform::URLOfItemAtPath(text(folder.path("a\uFFFD"))), URL::fileURLWithPath(literal))
        << "a name that is exactly this text needs no guessing";
}

TEST(RawPath, answersNothingWhereNoItemIs) {
    const TemporaryFolder folder;
    folder.file("file");
    EXPECT_EQ(platform::URLOfItemAtPath(text(folder.path("absent"))), std::nullopt);
    EXPECT_EQ(platform::URLOfItemAtPath(text(folder.path("file/below"))), std::nullopt);
    EXPECT_EQ(platform::URLOfItemAtPath(text(folder.path(std::string(300, 'x')))), std::nullopt);
    EXPECT_EQ(platform::URLOfItemAtPath(QString()), std::nullopt);
    EXPECT_EQ(platform::URLOfItemAtPath(QStringLiteral("relative")), std::nullopt);
    EXPECT_EQ(platform::URLOfItemAtPath(text(folder.path("file")) + QChar(u'\0')), std::nullopt);
    EXPECT_EQ(platform::URLOfItemAtPath(text(folder.path("file")) + QChar(0xD800)), std::nullopt);
}

TEST(RawPath, takesTheNameOfANewItemAsUtf8InAFolderThatIsThere) {
    const TemporaryFolder folder;
    const std::string inner = folder.folder("d\xFFr");
    folder.file("d\xFFr/n\xFF");
    EXPECT_EQ(
        platform::URLForNewItemAtPath(text(folder.path("d\uFFFDr/n\uFFFD"))),
        URL::fileURLWithPath(inner + "/n\uFFFD"));
    EXPECT_EQ(platform::URLForNewItemAtPath(QStringLiteral("/new")), URL::fileURLWithPath("/new"));
}

TEST(RawPath, hasNoPlaceForANewItemWithoutAFolder) {
    const TemporaryFolder folder;
    folder.file("file");
    EXPECT_EQ(platform::URLForNewItemAtPath(text(folder.path("absent/new"))), std::nullopt);
    EXPECT_EQ(platform::URLForNewItemAtPath(text(folder.path("file/new"))), std::nullopt);
    EXPECT_EQ(platform::URLForNewItemAtPath(text(folder.path("ends in a slash/"))), std::nullopt);
    EXPECT_EQ(platform::URLForNewItemAtPath(QStringLiteral("new")), std::nullopt);
}

TEST(RawPath, tellsWhatIsThere) {
    const TemporaryFolder folder;
    const auto dangling = URL::fileURLWithPath(folder.symlink("dangling", "nowhere"));
    EXPECT_TRUE(isThere(dangling));
    EXPECT_FALSE(isFolder(dangling));
    const auto leading = URL::fileURLWithPath(folder.symlink("leading", "."));
    EXPECT_TRUE(isFolder(leading));
    EXPECT_FALSE(isThere(URL::fileURLWithPath(folder.path("absent"))));
    EXPECT_FALSE(isFolder(URL::fileURLWithPath(folder.file("file"))));
}

TEST(RawPath, hasNoPathForOtherUrls) {
    EXPECT_EQ(platform::qtPath(*URL::fromText("https://example.com/a")), QString());
    EXPECT_EQ(platform::qtPath(*URL::fromText("file:///a%20b%C3%A9")), QStringLiteral("/a bé"));
}

TEST(RawPath, readsFieldTextAsANameInTheFolder) {
    EXPECT_EQ(platform::pathOfFieldText("name", "/in"), "/in/name");
    EXPECT_EQ(platform::pathOfFieldText("name", "/"), "/name");
    EXPECT_EQ(platform::pathOfFieldText("a/b", "/in"), "/in/a/b");
    EXPECT_EQ(platform::pathOfFieldText("./a", "/in"), "/in/a");
    EXPECT_EQ(platform::pathOfFieldText("../a", "/in"), "/in/../a");
    EXPECT_EQ(platform::pathOfFieldText("~name", "/in"), "/in/~name");
}

TEST(RawPath, readsFieldTextFromTheRootAndFromHome) {
    EXPECT_EQ(platform::pathOfFieldText("/a b", "/in"), "/a b");
    EXPECT_EQ(platform::pathOfFieldText("~/a", "/in"), QDir::homePath() + "/a");
}

} // namespace
} // namespace tolvane::tests
