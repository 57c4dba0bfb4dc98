// A folder of a test's own, and quick ways to fill it with items of every kind.
//
// The folder is new, and is removed with everything in it when the object goes. Names are bytes. Whatever
// cannot be made fails the test that asked for it.
#pragma once

#include <string>
#include <string_view>

namespace tolvane::tests {

class TemporaryFolder {
public:
    /// Below $TMPDIR, or /tmp where that is not set.
    TemporaryFolder();
    explicit TemporaryFolder(const std::string& parent);
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    /// The folder's own path, absolute and without a final slash.
    const std::string& path() const { return path_; }

    /// The path that a name has here, whether there is such an item or not.
    std::string path(std::string_view name) const;

    /// These make an item and answer its path. A file that is there is written anew.
    std::string file(std::string_view name, std::string_view contents = {}) const;
    std::string folder(std::string_view name) const;
    std::string symlink(std::string_view name, const std::string& target) const;
    std::string fifo(std::string_view name) const;
    std::string socket(std::string_view name) const;

private:
    std::string path_;
};

/// Sets an extended attribute, following links; false when the file system does not take it, with the reason
/// in errno. The name is bytes.
[[nodiscard]] bool setExtendedAttribute(
    const std::string& path, const std::string& name, std::string_view value);

/// Everything that a file holds.
std::string contentsOfFile(const std::string& path);

} // namespace tolvane::tests
