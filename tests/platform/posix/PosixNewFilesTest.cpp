#include "platform/posix/PosixNewFiles.h"

#include "tests/platform/linux/FolderTest.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <span>
#include <string>

namespace tolvane::platform {
namespace {

using namespace tests;
using namespace std::string_literals;

class PosixNewFilesTest : public FolderTest {
protected:
    std::int64_t codeOfWriting(const std::string& name, const std::string& text) {
        auto files = PosixNewFiles::open(folder.path());
        EXPECT_TRUE(files);
        const auto written = (*files)->write(name, std::as_bytes(std::span(text)));
        return written ? 0 : written.error().code;
    }

    static std::int64_t codeOfOpening(const std::string& path) {
        const auto files = PosixNewFiles::open(path);
        return files ? 0 : files.error().code;
    }
};

TEST_F(PosixNewFilesTest, areMadeWithTheirBytes) {
    EXPECT_EQ(codeOfWriting("a", "b\0c"s), 0);
    EXPECT_EQ(contentsOfFile(folder.path("a")), "b\0c"s);
    EXPECT_EQ(codeOfWriting("empty", ""), 0);
    EXPECT_EQ(contentsOfFile(folder.path("empty")), "");
}

TEST_F(PosixNewFilesTest, neverTakeThePlaceOfAnItem) {
    folder.file("file", "old");
    folder.file("target", "old");
    folder.symlink("link", "target");
    folder.symlink("dangling", "nowhere");
    folder.folder("folder");
    for (const std::string name : {"file", "link", "dangling", "folder"}) {
        EXPECT_EQ(codeOfWriting(name, "new"), EEXIST) << name;
    }
    EXPECT_EQ(contentsOfFile(folder.path("file")), "old");
    EXPECT_EQ(contentsOfFile(folder.path("target")), "old");
    EXPECT_FALSE(std::filesystem::exists(folder.path("nowhere")));
}

TEST_F(PosixNewFilesTest, stayInTheirFolder) {
    for (const std::string& name : {""s, "../a"s, "/tmp/a"s, "a/b"s, "a\0b"s}) {
        EXPECT_EQ(codeOfWriting(name, "new"), EINVAL) << name;
    }
    EXPECT_NE(codeOfWriting("..", "new"), 0);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(PosixNewFilesTest, areMadeInAFolderThatIsNoLink) {
    folder.folder("real");
    folder.symlink("link", "real");
    folder.file("file", "");
    EXPECT_EQ(codeOfOpening(folder.path("real")), 0);
    EXPECT_EQ(codeOfOpening(folder.path("real") + "/"), 0);
    EXPECT_NE(codeOfOpening(folder.path("link")), 0);
    EXPECT_NE(codeOfOpening(folder.path("link") + "//"), 0);
    EXPECT_EQ(codeOfOpening(folder.path("file")), ENOTDIR);
    EXPECT_EQ(codeOfOpening(folder.path("missing")), ENOENT);
}

TEST_F(PosixNewFilesTest, areMadeInTheFolderThatWasOpenedWhereverItIs) {
    folder.folder("out");
    auto files = PosixNewFiles::open(folder.path("out"));
    ASSERT_TRUE(files);
    std::filesystem::rename(folder.path("out"), folder.path("moved"));
    folder.folder("out");
    EXPECT_TRUE((*files)->write("a", {}));
    EXPECT_TRUE(std::filesystem::exists(folder.path("moved/a")));
    EXPECT_FALSE(std::filesystem::exists(folder.path("out/a")));
}

} // namespace
} // namespace tolvane::platform
