#include "cli/Names.h"

#include <algorithm>
#include <cerrno>

namespace tolvane::cli {

using platform::Result;

Result<platform::URL> urlOfName(const std::string& name, const Result<std::string>& currentFolder) {
    if (name.empty()) {
        return std::unexpected(platform::posixError(ENOENT));
    }
    // Before anything is left out of it: what was cut off could have named something else.
    if (name.size() >= NulSeparatedNames::longestName) {
        return std::unexpected(platform::posixError(ENAMETOOLONG));
    }
    const bool isAbsolute = name.starts_with('/');
    if (!isAbsolute && !currentFolder) {
        return std::unexpected(currentFolder.error());
    }
    const std::string path = platform::absolutePath(name, isAbsolute ? std::string() : *currentFolder);
    return platform::URL::fileURLWithPath(path);
}

Result<std::optional<std::string>> ListedNames::next() {
    if (rest_.empty()) {
        return std::nullopt;
    }
    const std::string& name = rest_.front();
    rest_ = rest_.subspan(1);
    return name;
}

Result<std::optional<std::string>> NulSeparatedNames::next() {
    std::string name;
    bool begun = false;
    while (true) {
        if (unread_.empty()) {
            const Result<std::size_t> count = stream_.read(buffer_);
            if (!count) {
                return std::unexpected(count.error());
            }
            if (*count == 0) {
                return begun ? std::optional(std::move(name)) : std::nullopt;
            }
            unread_ = std::span(buffer_).first(*count);
        }
        const auto nul = std::ranges::find(unread_, '\0');
        const auto length = static_cast<std::size_t>(nul - unread_.begin());
        name.append(unread_.data(), std::min(length, longestName - name.size()));
        begun = true;
        if (nul != unread_.end()) {
            unread_ = unread_.subspan(length + 1);
            return name;
        }
        unread_ = {};
    }
}

bool NulSeparatedNames::isNextAtHand() const {
    return std::ranges::find(unread_, '\0') != unread_.end();
}

} // namespace tolvane::cli
