/// Files and folders in memory, for what searches through them.
#pragma once

#include "platform/services/FileContents.h"
#include "tests/support/ScriptedSources.h"

#include <cerrno>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace tolvane::tests {

/// The files are those of a map from absolute paths; every path in front of a name is a folder.
class MemoryFileContents final : public platform::FileContents {
public:
    /// `files` outlives this object.
    explicit MemoryFileContents(const std::map<std::string, std::string>& files) : files_(files) {}

    std::map<std::string, std::uint64_t> volumes; ///< Of folders; 1 unless it is here.
    std::set<std::string> links;                  ///< Paths of files and folders that links lead to.
    std::set<std::string> unreadable;             ///< Paths that cannot be opened or listed.

    platform::FileAnswer<platform::ItemLook> lookAtItem(const std::string& path) const override {
        auto look = lookAtTarget(path);
        if (look && links.contains(path)) {
            look->kind = platform::ItemKind::symbolicLink;
        }
        return look;
    }

    platform::FileAnswer<platform::ItemLook> lookAtTarget(const std::string& path) const override {
        platform::ItemLook look;
        const auto volume = volumes.find(path);
        look.volume = volume == volumes.end() ? 1 : volume->second;
        if (const auto file = files_.find(path); file != files_.end()) {
            look.kind = platform::ItemKind::regularFile;
            look.size = file->second.size();
            return look;
        }
        const std::string start = path.ends_with('/') ? path : path + "/";
        const auto inside = files_.lower_bound(start);
        if (inside != files_.end() && inside->first.starts_with(start)) {
            look.kind = platform::ItemKind::folder;
            return look;
        }
        return failure(ENOENT);
    }

    platform::FileAnswer<std::string> destinationOfSymbolicLink(const std::string& /*path*/) const override {
        return failure(EINVAL);
    }

    platform::FileAnswer<std::shared_ptr<const platform::OpenedFile>> openForReading(
        const std::string& path) const override {
        const auto file = files_.find(path);
        if (file == files_.end() || unreadable.contains(path)) {
            return failure(file == files_.end() ? ENOENT : EACCES);
        }
        return std::make_shared<const MemoryFile>(file->second);
    }

    platform::FileAnswer<void> visitFolder(
        const std::string& path, const EntryVisitor& visitor) const override {
        if (unreadable.contains(path)) {
            return failure(EACCES);
        }
        const std::string start = path.ends_with('/') ? path : path + "/";
        std::set<std::string> names;
        for (auto file = files_.lower_bound(start); file != files_.end() && file->first.starts_with(start);
             ++file) {
            const std::string rest = file->first.substr(start.size());
            names.insert(rest.substr(0, rest.find('/')));
        }
        for (const std::string& name : names) {
            if (const auto look = lookAtItem(start + name); look && !visitor(name, *look)) {
                break;
            }
        }
        return {};
    }

private:
    class MemoryFile final : public platform::OpenedFile {
    public:
        explicit MemoryFile(const std::string& bytes) : bytes_(bytesOf(bytes)) {}

        platform::FileAnswer<std::uint64_t> size() const override { return bytes_.size(); }

        platform::FileAnswer<std::size_t> read(
            std::uint64_t offset, std::span<std::byte> room) const override {
            const std::size_t start = std::min<std::size_t>(offset, bytes_.size());
            const std::size_t count = std::min(room.size(), bytes_.size() - start);
            std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(start), count, room.begin());
            return count;
        }

    private:
        platform::Data bytes_;
    };

    static std::unexpected<std::error_code> failure(int number) {
        return std::unexpected(std::error_code(number, std::generic_category()));
    }

    const std::map<std::string, std::string>& files_;
};

} // namespace tolvane::tests
