#include "platform/qt/application/RecentDocuments.h"

#include "platform/qt/application/QtUserDefaults.h"
#include "tests/platform/qt/QtTest.h"
#include "tests/platform/qt/application/EventLoop.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::QtUserDefaults;
using platform::RecentDocuments;
using platform::URL;

class RecentDocumentsTest : public testing::Test {
protected:
    RecentDocumentsTest() { application(); }

    static std::vector<URL> urls(const std::vector<std::string>& paths) {
        std::vector<URL> list;
        list.reserve(paths.size());
        for (const std::string& path : paths) {
            list.push_back(URL::fileURLWithPath(path));
        }
        return list;
    }

    void add(const std::string& path) { recent.add(URL::fileURLWithPath(path)); }

    /// The list that another instance finds.
    std::vector<URL> written() const {
        QtUserDefaults theirs(QString::fromStdString(file));
        return RecentDocuments(theirs).documents();
    }

    TemporaryFolder folder;
    const std::string file = folder.path("tolvane.conf");
    QtUserDefaults defaults{QString::fromStdString(file)};
    RecentDocuments recent{defaults};
};

TEST_F(RecentDocumentsTest, keepsTenWithTheLastOpenedInFront) {
    for (int i = 0; i < 12; ++i) {
        add("/" + std::to_string(i));
    }
    EXPECT_EQ(recent.documents(), urls({"/11", "/10", "/9", "/8", "/7", "/6", "/5", "/4", "/3", "/2"}));
    add("/3");
    EXPECT_EQ(recent.documents(), urls({"/3", "/11", "/10", "/9", "/8", "/7", "/6", "/5", "/4", "/2"}));
}

TEST_F(RecentDocumentsTest, forgetsAllWhenClearedAndNotifiesItsObservers) {
    EXPECT_TRUE(recent.documents().empty());
    int changes = 0;
    auto subscription = recent.observe([&] { ++changes; });
    add("/a");
    EXPECT_EQ(changes, 1);
    recent.clear();
    EXPECT_EQ(changes, 2);
    EXPECT_TRUE(recent.documents().empty());
    recent.write();
    EXPECT_TRUE(written().empty());
    subscription.reset();
    add("/b");
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(recent.documents(), urls({"/b"}));
}

TEST_F(RecentDocumentsTest, addsToWhatAnotherInstanceAdded) {
    add("/a");
    recent.write();
    folder.file("tolvane.conf", "[General]\nRecentDocuments=file:///theirs, file:///a\n");
    EXPECT_EQ(recent.documents(), urls({"/theirs", "/a"}));
    folder.file("tolvane.conf", "[General]\nRecentDocuments=file:///theirs2, file:///theirs, file:///a\n");
    add("/b");
    EXPECT_EQ(recent.documents(), urls({"/b", "/theirs2", "/theirs", "/a"}));
    recent.write();
    EXPECT_EQ(written(), urls({"/b", "/theirs2", "/theirs", "/a"}));
}

TEST_F(RecentDocumentsTest, isWrittenLaterForAllThatIsOpenedTogether) {
    add("/a");
    add("/b");
    EXPECT_FALSE(std::filesystem::exists(file)) << "the windows come first";
    EXPECT_TRUE(eventually([this] { return written() == urls({"/b", "/a"}); }));
}

TEST_F(RecentDocumentsTest, isWrittenAtTheEndWithEveryByteOfAName) {
    const std::string name = "/caf\xE9, \"b\" %\n";
    RecentDocuments(defaults).add(URL::fileURLWithPath(name));
    EXPECT_EQ(written(), urls({name}));
}

TEST_F(RecentDocumentsTest, keepsWhatAnotherInstanceClearedAwayOnlyWhereItWasAddedSince) {
    add("/a");
    recent.write();
    add("/b");
    RecentDocuments(defaults).clear();
    EXPECT_EQ(recent.documents(), urls({"/b"}));
    recent.write();
    EXPECT_EQ(written(), urls({"/b"}));
}

TEST_F(RecentDocumentsTest, passesOverWhatIsNoUrlOrDouble) {
    std::string lines = "[General]\nRecentDocuments=nonsense, file:///a, file:///%zz, file:///a, file:///b";
    for (int i = 0; i < 20; ++i) {
        lines += ", file:///x" + std::to_string(i);
    }
    folder.file("tolvane.conf", lines + "\n");
    const auto documents = recent.documents();
    ASSERT_EQ(documents.size(), RecentDocuments::mostDocuments);
    EXPECT_EQ(documents[0], URL::fileURLWithPath("/a"));
    EXPECT_EQ(documents[1], URL::fileURLWithPath("/b"));
}

} // namespace
} // namespace tolvane::tests
