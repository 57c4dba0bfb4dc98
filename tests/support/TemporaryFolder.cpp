#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <unistd.h>

namespace tolvane::tests {

namespace {

std::string parentOfTemporaryFolders() {
    const char* folder = std::getenv("TMPDIR");
    return folder != nullptr && *folder == '/' ? folder : "/tmp";
}

void expectSuccess(int result, const std::string& path) {
    const int failure = errno;
    EXPECT_EQ(result, 0) << path << ": " << std::strerror(failure);
}

} // namespace

TemporaryFolder::TemporaryFolder() : TemporaryFolder(parentOfTemporaryFolders()) {}

TemporaryFolder::TemporaryFolder(const std::string& parent) : path_(parent + "/tolvane-test-XXXXXX") {
    if (mkdtemp(path_.data()) == nullptr) {
        ADD_FAILURE() << path_ << ": " << std::strerror(errno);
    }
    // Tests look at what other users may see, so the folder is open to them.
    expectSuccess(chmod(path_.c_str(), 0755), path_);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code failure;
    std::filesystem::remove_all(path_, failure);
    EXPECT_FALSE(failure) << path_ << ": " << failure.message();
}

std::string TemporaryFolder::path(std::string_view name) const {
    return path_ + "/" + std::string(name);
}

std::string TemporaryFolder::file(std::string_view name, std::string_view contents) const {
    auto item = path(name);
    std::ofstream stream(item, std::ios::binary | std::ios::trunc);
    stream.write(contents.data(), static_cast<std::streamsize>(contents.size()));
    stream.close();
    EXPECT_TRUE(stream) << item;
    return item;
}

std::string TemporaryFolder::folder(std::string_view name) const {
    auto item = path(name);
    expectSuccess(mkdir(item.c_str(), 0755), item);
    return item;
}

std::string TemporaryFolder::symlink(std::string_view name, const std::string& target) const {
    auto item = path(name);
    expectSuccess(::symlink(target.c_str(), item.c_str()), item);
    return item;
}

std::string TemporaryFolder::fifo(std::string_view name) const {
    auto item = path(name);
    expectSuccess(mkfifo(item.c_str(), 0644), item);
    return item;
}

std::string TemporaryFolder::socket(std::string_view name) const {
    auto item = path(name);
    // Not by bind, which takes short paths only.
    expectSuccess(mknod(item.c_str(), S_IFSOCK | 0644, 0), item);
    return item;
}

struct stat statusOf(const std::string& path) {
    struct stat status{};
    expectSuccess(lstat(path.c_str(), &status), path);
    return status;
}

std::string contentsOfFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream) << path;
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace tolvane::tests
