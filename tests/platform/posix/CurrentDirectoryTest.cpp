#include "platform/posix/CurrentDirectory.h"

#include "tests/platform/linux/FolderTest.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::platform {
namespace {

/// Returns to the current directory at the end of each test.
class CurrentDirectoryTest : public tests::FolderTest {
public:
    ~CurrentDirectoryTest() override {
        EXPECT_EQ(fchdir(descriptor_), 0);
        close(descriptor_);
    }

private:
    int descriptor_ = open(".", O_PATH | O_DIRECTORY | O_CLOEXEC);
};

TEST_F(CurrentDirectoryTest, isTheFolderThatTheProcessIsIn) {
    const auto path = folder.folder("\xFF");
    ASSERT_EQ(chdir(path.c_str()), 0);
    const auto directory = currentDirectory();
    ASSERT_TRUE(directory);
    EXPECT_TRUE(directory->ends_with(path)); // links on the way to the temporary folder are resolved
}

TEST_F(CurrentDirectoryTest, mayBeLongerThanAnyPathToASystemCall) {
    ASSERT_EQ(chdir(folder.path().c_str()), 0);
    std::string expected = folder.path();
    const std::string name(250, 'n');
    for (int depth = 0; depth < 40; ++depth) {
        ASSERT_EQ(mkdir(name.c_str(), 0755), 0);
        ASSERT_EQ(chdir(name.c_str()), 0);
        expected += "/" + name;
    }
    const auto directory = currentDirectory();
    ASSERT_TRUE(directory) << directory.error().localizedDescription();
    EXPECT_TRUE(directory->ends_with(expected));
}

TEST_F(CurrentDirectoryTest, failsInAFolderThatWasRemoved) {
    const auto path = folder.folder("a");
    ASSERT_EQ(chdir(path.c_str()), 0);
    ASSERT_EQ(rmdir(path.c_str()), 0);
    const auto directory = currentDirectory();
    ASSERT_FALSE(directory);
    EXPECT_EQ(directory.error().code, ENOENT);
}

} // namespace
} // namespace tolvane::platform
