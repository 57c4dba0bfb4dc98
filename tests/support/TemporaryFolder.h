/// A temporary folder for one test, with functions that fill it with items of every kind.
///
/// It is new, and removed with everything in it at the object's end. Names are bytes. A failure to create
/// something fails the test.
#pragma once

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace tolvane::tests {

class TemporaryFolder {
public:
    /// In $TMPDIR, or /tmp if that is not set.
    TemporaryFolder();
    explicit TemporaryFolder(const std::string& parent);
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    /// The absolute path of the folder, without a final slash.
    const std::string& path() const { return path_; }

    /// The path of a name in the folder, whether the item exists or not.
    std::string path(std::string_view name) const;

    /// These make an item and return its path. Existing files are overwritten.
    std::string file(std::string_view name, std::string_view contents = {}) const;
    std::string folder(std::string_view name) const;
    std::string symlink(std::string_view name, const std::string& target) const;
    std::string fifo(std::string_view name) const;
    std::string socket(std::string_view name) const;

private:
    std::string path_;
};

/// Sets an extended attribute, following links; false if the file system refuses it, with the reason in
/// errno. The name is bytes.
[[nodiscard]] bool setExtendedAttribute(
    const std::string& path, const std::string& name, std::string_view value);

/// What lstat(2) returns for an item. A failure fails the test.
struct stat statusOf(const std::string& path);

/// The contents of a file.
std::string contentsOfFile(const std::string& path);

} // namespace tolvane::tests
