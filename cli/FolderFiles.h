#pragma once

#include "cli/Names.h"
#include "platform/services/FileContents.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tolvane::cli {

/// The names that were given and, instead of a folder, the regular files in it and in the folders below,
/// sorted by name in each. Links in folders are not followed, and folders on other volumes are left out
/// unless they are wanted. A folder that cannot be listed is a name of its own, as is one that was given
/// without the wish to descend.
class FolderFiles final : public Names {
public:
    struct Settings {
        bool recursive = false;
        bool otherVolumes = false;
    };

    /// All references outlive this object. Relative names are in the current folder.
    FolderFiles(
        std::span<const std::string> names,
        Settings settings,
        const platform::FileContents& contents,
        std::function<platform::Result<std::string>()> currentFolder);

    platform::Result<std::optional<std::string>> next() override;
    bool isNextAtHand() const override { return !pending_.empty() || !rest_.empty(); }

private:
    struct Entry {
        std::string name;
        bool isFolder = false;
        std::uint64_t volume = 0; ///< Of the folder that was given.
    };

    Entry entryGiven(const std::string& name) const;
    std::optional<std::vector<Entry>> entriesOf(const Entry& folder) const;

    std::span<const std::string> rest_;
    Settings settings_;
    const platform::FileContents& contents_;
    std::function<platform::Result<std::string>()> currentFolder_;
    std::vector<Entry> pending_; ///< The next one is the last.
};

} // namespace tolvane::cli
