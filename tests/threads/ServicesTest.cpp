// The services under several threads, as the terminal program uses them. The thread sanitizer watches in the
// preset "tsan".
#include "platform/linux/LinuxPlatform.h"
#include "tests/platform/linux/FolderTest.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <thread>
#include <vector>

namespace tolvane::tests {
namespace {

using namespace tolvane::platform;

class Services : public FolderTest {
protected:
    struct Facts {
        Result<Dictionary> values;
        Result<Dictionary> attributes;
        Result<Data> bookmark;
        Result<ResolvedBookmark> resolved;
        std::string date;
    };

    static Facts factsOf(const std::string& path, const LinuxPlatform& system) {
        static constexpr std::array keys{
            NSURLFileSizeKey, NSURLTotalFileSizeKey, NSURLTypeIdentifierKey, NSURLFileResourceIdentifierKey};
        const URL url = URL::fileURLWithPath(path);
        Facts facts{
            system.resources.resourceValuesForKeys(url, keys),
            system.fileManager.attributesOfItemAtPath(path),
            system.bookmarks.bookmarkData(url),
            {},
            system.session.describeForLocale(Date(0))};
        facts.resolved = system.bookmarks.URLByResolvingBookmarkData(facts.bookmark.value_or(Data()));
        return facts;
    }

    static void expectSame(const Facts& seen, const Facts& expected, const std::string& path) {
        EXPECT_EQ(seen.values.value_or(Dictionary()), expected.values.value_or(Dictionary())) << path;
        EXPECT_EQ(seen.attributes.value_or(Dictionary()), expected.attributes.value_or(Dictionary())) << path;
        ASSERT_EQ(seen.bookmark.has_value(), expected.bookmark.has_value()) << path;
        ASSERT_EQ(seen.resolved.has_value(), expected.resolved.has_value()) << path;
        if (seen.bookmark) {
            // A bookmark also tells when it was made.
            EXPECT_EQ(seen.bookmark->size(), expected.bookmark->size()) << path;
        }
        if (seen.resolved) {
            EXPECT_EQ(seen.resolved->url, expected.resolved->url) << path;
            EXPECT_EQ(seen.resolved->match, expected.resolved->match) << path;
        }
        EXPECT_EQ(seen.date, expected.date);
    }
};

TEST_F(Services, giveSeveralThreadsWhatTheyGiveOne) {
    std::vector<std::string> paths{"/", "/dev/null", real, real + "/nothing"};
    for (const std::string subfolder : {"a", "b"}) {
        folder.folder(subfolder);
        for (int i = 0; i < 10; ++i) {
            paths.push_back(folder.file(subfolder + "/file " + std::to_string(i) + ".TXT", "words"));
            static_cast<void>(setExtendedAttribute(paths.back(), "user.note", std::to_string(i)));
        }
    }
    const LinuxPlatform alone(TypeTable::withoutDeclarations());
    std::vector<Facts> expected;
    for (const std::string& path : paths) {
        expected.push_back(factsOf(path, alone));
    }
    const LinuxPlatform shared(TypeTable::withoutDeclarations());
    std::vector<std::vector<Facts>> seen(4);
    {
        std::vector<std::jthread> threads;
        for (std::vector<Facts>& own : seen) {
            threads.emplace_back([&] {
                for (const std::string& path : paths) {
                    own.push_back(factsOf(path, shared));
                }
            });
        }
    }
    for (const std::vector<Facts>& own : seen) {
        ASSERT_EQ(own.size(), paths.size());
        for (std::size_t i = 0; i < paths.size(); ++i) {
            expectSame(own[i], expected[i], paths[i]);
        }
    }
}

} // namespace
} // namespace tolvane::tests
