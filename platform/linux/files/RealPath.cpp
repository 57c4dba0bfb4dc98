#include "platform/linux/files/RealPath.h"

#include "platform/values/Pieces.h"

#include <algorithm>
#include <cerrno>
#include <linux/limits.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

// The kernel's own limit.
constexpr int mostLinks = 40;

Result<std::string> targetOfLink(const std::string& path) {
    std::array<char, PATH_MAX> buffer{};
    const auto length = readlink(path.c_str(), buffer.data(), buffer.size());
    if (length < 0) {
        return std::unexpected(posixError(errno));
    }
    return std::string(buffer.data(), static_cast<std::size_t>(length));
}

bool asksForFolder(std::string_view path) {
    return path.ends_with('/') || path == "." || path == ".." || path.ends_with("/.")
           || path.ends_with("/..");
}

// Goes down the path step by step.
class Walk {
public:
    explicit Walk(const std::string& path) : followsLast_(asksForFolder(path)) { push(path); }

    Result<RealPath> walk() {
        auto root = statusOfItem("/");
        if (!root) {
            return std::unexpected(root.error());
        }
        real_.items.push_back(*std::move(root));
        while (!pending_.empty()) {
            const std::string component = std::move(pending_.back());
            pending_.pop_back();
            if (auto step = take(component); !step) {
                return std::unexpected(step.error());
            }
        }
        return std::move(real_);
    }

private:
    // The components of the path come before those that are still pending.
    void push(std::string_view path) {
        auto components = nonEmptyPieces(path, '/');
        std::erase(components, ".");
        pending_.insert(pending_.end(), components.rbegin(), components.rend());
    }

    Result<void> take(const std::string& component) {
        if (component == "..") {
            if (!real_.components.empty()) {
                goUp();
            }
            return {};
        }
        const std::string path = textWith(component);
        auto status = statusOfItem(path);
        if (!status) {
            return std::unexpected(status.error());
        }
        const bool goesOn = !pending_.empty() || followsLast_;
        if (goesOn && S_ISLNK(status->mode)) {
            return follow(path);
        }
        if (goesOn && !S_ISDIR(status->mode)) {
            return std::unexpected(posixError(ENOTDIR));
        }
        text_ = path;
        real_.components.push_back(component);
        real_.items.push_back(*std::move(status));
        return {};
    }

    Result<void> follow(const std::string& link) {
        if (++links_ > mostLinks) {
            return std::unexpected(posixError(ELOOP));
        }
        const auto target = targetOfLink(link);
        if (!target) {
            return std::unexpected(target.error());
        }
        if (target->starts_with('/')) {
            text_.clear();
            real_.components.clear();
            real_.items.resize(1, real_.items.front());
        }
        push(*target);
        return {};
    }

    std::string textWith(const std::string& component) const { return text_ + "/" + component; }

    void goUp() {
        text_.resize(text_.rfind('/'));
        real_.components.pop_back();
        real_.items.pop_back();
    }

    RealPath real_;
    std::string text_;                 // of the components so far; empty for "/"
    std::vector<std::string> pending_; // the next one last
    bool followsLast_;
    int links_ = 0;
};

} // namespace

std::string RealPath::textDownTo(std::size_t count) const {
    std::string text = count == 0 ? "/" : "";
    for (std::size_t i = 0; i < count; ++i) {
        text.append("/").append(components[i]);
    }
    return text;
}

Result<RealPath> realPathOfItem(const std::string& path) {
    if (path.contains('\0')) {
        return std::unexpected(posixError(EINVAL));
    }
    if (!path.starts_with('/')) {
        return std::unexpected(posixError(ENOENT));
    }
    return Walk(path).walk();
}

bool isUnchanged(const RealPath& path) {
    const auto root = statusOfItem("/");
    return root && isSameItem(*root, path.items.front()) && isUnchangedBelowRoot(path);
}

bool isUnchangedBelowRoot(const RealPath& path) {
    std::string text;
    for (std::size_t i = 0; i < path.components.size(); ++i) {
        text.append("/").append(path.components[i]);
        const auto status = statusOfItem(text);
        if (!status || !isSameItem(*status, path.items[i + 1])) {
            return false;
        }
    }
    return true;
}

bool isSameItem(const ItemStatus& a, const ItemStatus& b) {
    return a.fileNumber == b.fileNumber && a.device == b.device && a.mountID == b.mountID
           && (a.mode & S_IFMT) == (b.mode & S_IFMT) && a.creationDate == b.creationDate;
}

} // namespace tolvane::platform
