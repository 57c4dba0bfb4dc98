#include "resolver/FileSearch.h"

#include "tests/support/BookmarkCorpus.h"
#include "tests/support/MemoryFileContents.h"
#include "tests/support/ScriptedSources.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <mutex>
#include <span>
#include <string>
#include <thread>

namespace tolvane::tests {
namespace {

class FileSearch : public testing::Test {
protected:
    auto search(const std::string& path) {
        return resolver::searchFile(path, {contents, attributes, containers::ComposedText()});
    }

    std::map<std::string, std::string> files;
    CallLog log;
    MemoryFileContents contents{files};
    ScriptedExtendedAttributes attributes{log};
};

TEST_F(FileSearch, findsWhatIsInTheContentsBeforeWhatIsInAttributes) {
    files["/both"] = corpusText("note.bookmark");
    attributes.attributes = {{"user.a", "text"}, {"user.b", corpusText("note.bookmark")}};
    const auto found = search("/both");
    ASSERT_TRUE(found && *found);
    ASSERT_EQ((*found)->findings.size(), 2U);
    EXPECT_FALSE((*found)->findings[0].where.contains("user.b"));
    EXPECT_TRUE((*found)->findings[1].where.contains("user.b"));
}

TEST_F(FileSearch, findsNothingInAnAttributeThatIsGone) {
    files["/file"] = "text";
    attributes.attributes = {{"user.b", corpusText("note.bookmark")}};
    attributes.onSize = [](const char*, const char*) { return std::unexpected(ENODATA); };
    const auto found = search("/file");
    ASSERT_TRUE(found);
    EXPECT_FALSE(*found);
}

TEST_F(FileSearch, holdsManyBytesOnlyInItsTurn) {
    files["/few"] = corpusText("note.bookmark");
    files["/many"] = corpusText("note.bookmark") + std::string(containers::fewBytes, ' ');
    std::mutex turn;
    const auto isTaken = [&turn] {
        bool isFree = false;
        std::thread([&] {
            const std::unique_lock lock(turn, std::try_to_lock);
            isFree = lock.owns_lock();
        }).join();
        return !isFree;
    };
    bool wasTaken = false;
    attributes.onList = [&](const char*, std::span<char>) {
        wasTaken = isTaken();
        return ScriptedExtendedAttributes::Answer(0);
    };
    const resolver::FileSearchSources sources{contents, attributes, containers::ComposedText(), &turn};
    EXPECT_TRUE(*resolver::searchFile("/few", sources));
    EXPECT_FALSE(wasTaken) << "small files wait for nothing";
    EXPECT_TRUE(resolver::searchFile("/many", sources));
    EXPECT_TRUE(wasTaken);
    EXPECT_FALSE(isTaken());
}

TEST_F(FileSearch, failsWhereTheContentsCannotBeRead) {
    EXPECT_FALSE(search("/missing"));
}

} // namespace
} // namespace tolvane::tests
