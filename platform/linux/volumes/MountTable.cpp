#include "platform/linux/volumes/MountTable.h"

#include "platform/linux/files/ItemStatus.h"
#include "platform/values/Pieces.h"

#include <algorithm>
#include <charconv>
#include <numeric>
#include <optional>
#include <utility>

namespace tolvane::platform {

namespace {

template <typename Number>
std::optional<Number> numberIn(std::string_view text) {
    Number number{};
    const char* const start = text.data();
    const char* const end = start + text.size();
    const auto [stop, fault] = std::from_chars(start, end, number);
    return fault == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

bool isOctal(char c) {
    return c >= '0' && c <= '7';
}

// The kernel writes a backslash, and characters that would end a field, as a backslash and three octal
// digits.
std::string unescaped(std::string_view field) {
    std::string bytes;
    bytes.reserve(field.size());
    while (!field.empty()) {
        const bool isEscape = field.size() >= 4 && field[0] == '\\' && field[1] >= '0' && field[1] <= '3'
                              && isOctal(field[2]) && isOctal(field[3]);
        if (isEscape) {
            bytes += static_cast<char>((field[1] - '0') * 64 + (field[2] - '0') * 8 + (field[3] - '0'));
        } else {
            bytes += field.front();
        }
        field.remove_prefix(isEscape ? 4 : 1);
    }
    return bytes;
}

bool hasOption(std::string_view options, std::string_view wanted) {
    const auto given = nonEmptyPieces(options, ',');
    return std::ranges::find(given, wanted) != given.end();
}

std::optional<std::uint64_t> deviceIn(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    const auto major = numberIn<std::uint32_t>(text.substr(0, colon));
    const auto minor = numberIn<std::uint32_t>(text.substr(colon + 1));
    return major && minor ? std::optional(deviceNumber(*major, *minor)) : std::nullopt;
}

std::optional<Mount> mountIn(std::string_view line) {
    const auto id = numberIn<std::uint64_t>(takeUntil(' ', line));
    const auto parent = numberIn<std::uint64_t>(takeUntil(' ', line));
    const auto device = deviceIn(takeUntil(' ', line));
    Mount mount;
    mount.root = unescaped(takeUntil(' ', line));
    mount.mountPoint = unescaped(takeUntil(' ', line));
    const std::string_view mountOptions = takeUntil(' ', line);
    // Any number of optional fields precede the dash.
    while (!line.empty() && takeUntil(' ', line) != "-") {}
    mount.type = unescaped(takeUntil(' ', line));
    mount.source = unescaped(takeUntil(' ', line));
    mount.superOptions = unescaped(takeUntil(' ', line));
    if (!id || !parent || !device || !mount.mountPoint.starts_with('/') || mount.type.empty()) {
        return std::nullopt;
    }
    mount.id = *id;
    mount.parent = *parent;
    mount.device = *device;
    mount.isReadOnly = hasOption(mountOptions, "ro") || hasOption(mount.superOptions, "ro");
    return mount;
}

} // namespace

MountTable::MountTable(std::vector<Mount> mounts)
    : mounts_(std::move(mounts))
    , byMountPoint_(mounts_.size()) {
    std::iota(byMountPoint_.begin(), byMountPoint_.end(), std::size_t{0});
    std::ranges::sort(byMountPoint_, {}, [this](std::size_t index) {
        return std::pair(std::string_view(mounts_[index].mountPoint), index);
    });
}

MountTable MountTable::parse(std::string_view mountinfo) {
    std::vector<Mount> mounts;
    for (const std::string_view line : nonEmptyPieces(mountinfo, '\n')) {
        if (auto mount = mountIn(line)) {
            mounts.push_back(*std::move(mount));
        }
    }
    return MountTable(std::move(mounts));
}

const Mount* MountTable::withID(std::uint64_t id) const {
    const auto mount = std::ranges::find(mounts_, id, &Mount::id);
    return mount != mounts_.end() ? &*mount : nullptr;
}

const Mount* MountTable::topmostAt(std::string_view mountPoint) const {
    const auto way = onTheWayTo(mountPoint);
    return !way.empty() && way.back().mount->mountPoint == mountPoint ? way.back().mount : nullptr;
}

// The mount at the mount point as seen from 'ground', or null. A mount on one that the process cannot see
// counts as being on its root.
const Mount* MountTable::topmostOn(const Mount* ground, std::string_view mountPoint) const {
    const auto candidates = std::ranges::equal_range(byMountPoint_, mountPoint, {}, mountPointOf());
    const Mount* top = nullptr;
    const auto standsOn = [this](const Mount& mount, const Mount* below) {
        if (below != nullptr) {
            return mount.parent == below->id && &mount != below;
        }
        return mount.parent == mount.id || withID(mount.parent) == nullptr;
    };
    // Each step goes up one mount, so an inconsistent list ends the loop too.
    for (std::size_t step = 0; step < candidates.size(); ++step) {
        const auto next = std::ranges::find_if(candidates, [&](std::size_t index) {
            return standsOn(mounts_[index], top != nullptr ? top : ground);
        });
        if (next == candidates.end()) {
            break;
        }
        top = &mounts_[*next];
    }
    return top;
}

std::vector<MountOnTheWay> MountTable::onTheWayTo(std::string_view path) const {
    std::vector<MountOnTheWay> way;
    const Mount* ground = nullptr;
    std::size_t depth = 0;
    const auto comeTo = [&](std::string_view folder) {
        if (const Mount* const mount = topmostOn(ground, folder)) {
            ground = mount;
            way.push_back({depth, mount});
        }
    };
    comeTo("/");
    for (std::size_t end = 0; end < path.size() && path.size() > 1;) {
        end = std::min(path.find('/', end + 1), path.size());
        ++depth;
        comeTo(path.substr(0, end));
    }
    return way;
}

std::vector<const Mount*> MountTable::reachable() const {
    std::vector<const Mount*> mounts;
    for (const Mount& mount : mounts_) {
        if (topmostAt(mount.mountPoint) == &mount) {
            mounts.push_back(&mount);
        }
    }
    return mounts;
}

} // namespace tolvane::platform
