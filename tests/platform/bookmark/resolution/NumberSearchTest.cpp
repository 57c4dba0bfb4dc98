#include "platform/bookmark/resolution/NumberSearch.h"

#include "tests/platform/bookmark/resolution/PretendVolumes.h"

#include <set>

namespace tolvane::platform {
namespace {

constexpr double bornAt = 700'000'000.25;

class NumberSearch : public testing::Test {
protected:
    NumberSearch() {
        mounted.mount("/", 10);
        mounted.addFolder("/home", 20);
        mounted.addFolder("/home/anna", 21);
        mounted.addFolder("/home/anna/letters", 22);
        mounted.addFile("/home/anna/letters/may", 23, bornAt);
    }

    NumberSearchResult findWithin(std::size_t& remaining, unsigned mostThreads) {
        return findByNumbers(
            mounted.volumes().front(), {{"home", 20}, {"anna", 21}, {"letters", 22}, {"may", number}},
            {number, Date(bornAt), kind}, mounted, remaining, mostThreads);
    }

    NumberSearchResult find() {
        std::size_t remaining = mostEntriesSearched;
        return findWithin(remaining, 2);
    }

    std::string found() { return find().path.value_or("nothing"); }

    tests::PretendVolumes mounted;
    std::uint64_t number = 23;
    std::optional<ItemKind> kind = ItemKind::regularFile;
};

TEST_F(NumberSearch, findsAnItemRenamedInItsFolder) {
    mounted.move("/home/anna/letters/may", "/home/anna/letters/june");
    EXPECT_EQ(found(), "/home/anna/letters/june");
    EXPECT_FALSE(find().wasSearched);
    EXPECT_EQ(mounted.foldersRead.front(), "/home/anna/letters");
}

TEST_F(NumberSearch, findsAnItemBelowRenamedFolders) {
    mounted.move("/home/anna/letters", "/home/anna/post");
    EXPECT_EQ(found(), "/home/anna/post/may");
    mounted.move("/home/anna", "/home/bert");
    EXPECT_EQ(found(), "/home/bert/post/may");
    mounted.move("/home", "/users");
    EXPECT_EQ(found(), "/users/bert/post/may");
    EXPECT_FALSE(find().wasSearched);
    mounted.move("/users/bert/post/may", "/users/bert/post/june");
    EXPECT_EQ(found(), "/users/bert/post/june");
    EXPECT_FALSE(find().wasSearched);
}

TEST_F(NumberSearch, readsNoMoreFoldersThanThoseOnTheWay) {
    mounted.addFolder("/home/anna/many", 30);
    mounted.addFolder("/home/anna/many/more", 31);
    mounted.move("/home/anna/letters", "/home/anna/post");
    EXPECT_EQ(found(), "/home/anna/post/may");
    EXPECT_EQ(mounted.foldersRead, (std::vector<std::string>{"/home/anna", "/home/anna/post"}));
}

TEST_F(NumberSearch, goesOnWithTheLinkThatKeptItsName) {
    mounted.move("/home/anna/letters", "/home/anna/post");
    mounted.addFile("/home/anna/post/alias", 23, bornAt);
    EXPECT_EQ(found(), "/home/anna/post/may");
    mounted.remove("/home/anna/post/may");
    EXPECT_EQ(found(), "/home/anna/post/alias");
}

TEST_F(NumberSearch, passesOverAnotherFolderThatTookThePlace) {
    mounted.move("/home/anna/letters", "/home/anna/old");
    mounted.addFolder("/home/anna/letters", 99);
    mounted.addFile("/home/anna/letters/other", 98, bornAt);
    EXPECT_EQ(found(), "/home/anna/old/may");
}

TEST_F(NumberSearch, findsAnItemMovedAnywhereUpToTheMountPoint) {
    std::string path = "/home/anna/letters/may";
    std::uint64_t newNumber = 30;
    for (const std::string folder :
         {"/home/anna/letters/2024", "/home/anna/letters/2024/spring", "/home/anna/archive", "/srv",
          "/srv/deep"}) {
        mounted.addFolder(folder, newNumber++);
        mounted.move(path, folder + "/may");
        path = folder + "/may";
        EXPECT_EQ(found(), path);
        EXPECT_TRUE(find().wasSearched);
    }
}

TEST_F(NumberSearch, findsAFolderMovedWithItsItem) {
    mounted.addFolder("/srv", 30);
    mounted.move("/home/anna/letters", "/srv/letters");
    EXPECT_EQ(found(), "/srv/letters/may");
    EXPECT_TRUE(find().wasSearched);
}

TEST_F(NumberSearch, searchesNearestFirst) {
    mounted.addFolder("/home/anna/letters/sub", 30);
    mounted.addFolder("/a", 31);
    mounted.move("/home/anna/letters/may", "/home/anna/letters/sub/may");
    mounted.addFile("/a/may", 23, bornAt);
    EXPECT_EQ(found(), "/home/anna/letters/sub/may");
}

TEST_F(NumberSearch, readsEachFolderOnce) {
    mounted.addFolder("/srv", 30);
    mounted.remove("/home/anna/letters/may");
    EXPECT_EQ(found(), "nothing");
    const std::multiset<std::string> read(mounted.foldersRead.begin(), mounted.foldersRead.end());
    // The folder that the search starts from was read before, for the numbers along the path.
    EXPECT_EQ(
        read, (std::multiset<std::string>{
                  "/", "/home", "/home/anna", "/home/anna/letters", "/home/anna/letters", "/srv"}));
}

TEST_F(NumberSearch, findsNoItemThatWasCreatedAtAnotherTime) {
    mounted.remove("/home/anna/letters/may");
    mounted.addFile("/home/anna/letters/june", 23, bornAt + 1);
    EXPECT_EQ(found(), "nothing");
    mounted.addFile("/home/anna/letters/june", 23, bornAt + 1e-7);
    EXPECT_EQ(found(), "/home/anna/letters/june");
    mounted.item("/home/anna/letters/june").creationDate.reset();
    EXPECT_EQ(found(), "nothing");
}

TEST_F(NumberSearch, goesOnPastAnItemThatOnlyHasTheNumber) {
    mounted.remove("/home/anna/letters/may");
    mounted.addFile("/home/anna/letters/june", 23, bornAt + 1);
    mounted.addFile("/home/anna/may", 23, bornAt);
    EXPECT_EQ(found(), "/home/anna/may");
}

TEST_F(NumberSearch, findsNoItemOfAnotherKind) {
    mounted.remove("/home/anna/letters/may");
    mounted.add("/home/anna/letters/june", 23, ItemKind::symbolicLink, bornAt);
    EXPECT_EQ(found(), "nothing");
    kind.reset();
    EXPECT_EQ(found(), "/home/anna/letters/june");
}

TEST_F(NumberSearch, entersNoOtherVolumeAndNoLink) {
    mounted.remove("/home/anna/letters/may");
    mounted.mount("/home/anna/letters/stick", 20);
    mounted.addFile("/home/anna/letters/stick/may", 23, bornAt);
    mounted.add("/home/anna/link", 40, ItemKind::symbolicLink, bornAt);
    mounted.addFile("/home/anna/link/may", 23, bornAt);
    EXPECT_EQ(found(), "nothing");
}

TEST_F(NumberSearch, reportsWhenAFolderCouldNotBeRead) {
    mounted.addFolder("/srv", 30);
    mounted.remove("/home/anna/letters/may");
    EXPECT_FALSE(find().wasCutShort);
    mounted.denied.insert("/srv");
    EXPECT_TRUE(find().wasCutShort);
    mounted.denied.clear();
    EXPECT_FALSE(find().wasCutShort);
    mounted.addFolder("/srv/closed", 31);
    mounted.denied.insert("/srv");
    EXPECT_TRUE(find().wasCutShort);
}

TEST_F(NumberSearch, findsTheSameWithAnyNumberOfThreads) {
    mounted.remove("/home/anna/letters/may");
    std::uint64_t next = 1'000;
    for (int i = 0; i < 60; ++i) {
        const std::string outer = "/home/anna/letters/" + std::to_string(i);
        mounted.addFolder(outer, ++next);
        for (int k = 0; k < 5; ++k) {
            mounted.addFolder(outer + "/" + std::to_string(k), ++next);
        }
    }
    // Equally near, and nearer than the third.
    mounted.addFile("/home/anna/letters/40/may", 23, bornAt);
    mounted.addFile("/home/anna/letters/41/may", 23, bornAt);
    mounted.addFile("/home/anna/letters/10/2/may", 23, bornAt);
    mounted.denied.insert("/home/anna/letters/59");
    // With few entries remaining, the search ends before, at and behind the item.
    for (std::size_t most = 50; most < 420; most += 3) {
        std::size_t remainingWithOne = most;
        const NumberSearchResult one = findWithin(remainingWithOne, 1);
        for (const unsigned threads : {2U, 3U, 8U}) {
            std::size_t remaining = most;
            const NumberSearchResult result = findWithin(remaining, threads);
            EXPECT_EQ(result.path, one.path) << most;
            EXPECT_EQ(result.wasCutShort, one.wasCutShort) << most;
            EXPECT_EQ(remaining, remainingWithOne) << most;
        }
    }
    EXPECT_EQ(found(), "/home/anna/letters/40/may");
}

TEST_F(NumberSearch, givesUpAfterSoManyEntries) {
    mounted.remove("/home/anna/letters/may");
    mounted.addFolder("/home/crowd", 30);
    for (std::size_t i = 0; i < mostEntriesSearched; ++i) {
        mounted.addFile("/home/crowd/" + std::to_string(i), 1'000 + i, bornAt);
    }
    mounted.addFolder("/zoo", 31);
    mounted.addFile("/zoo/may", 23, bornAt);
    const NumberSearchResult result = find();
    EXPECT_FALSE(result.path);
    EXPECT_TRUE(result.wasCutShort);
    EXPECT_EQ(mounted.entriesGiven, mostEntriesSearched);
}

TEST_F(NumberSearch, findsNothingWhereTheMountPointIsGone) {
    mounted.remove("/");
    mounted.move("/home/anna/letters/may", "/home/anna/letters/june");
    mounted.item("/home/anna/letters").fileNumber = 99;
    mounted.item("/home/anna").fileNumber = 98;
    mounted.item("/home").fileNumber = 97;
    EXPECT_EQ(found(), "nothing");
}

} // namespace
} // namespace tolvane::platform
