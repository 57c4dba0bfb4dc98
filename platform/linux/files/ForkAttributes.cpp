#include "platform/linux/files/ForkAttributes.h"

#include "platform/values/Pieces.h"

#include <algorithm>
#include <cerrno>
#include <span>
#include <string_view>
#include <utility>
#include <vector>
#include <linux/limits.h>
#include <sys/xattr.h>

namespace tolvane::platform {

namespace {

constexpr std::array resourceForkNames{
    "user.com.apple.ResourceFork", "osx.com.apple.ResourceFork", "user.org.netatalk.ResourceFork"};
constexpr std::array finderInfoNames{"user.com.apple.FinderInfo", "osx.com.apple.FinderInfo"};

// The first of the known names that is listed.
const char* firstOf(std::span<const char* const> knownNames, std::span<const std::string_view> listed) {
    const auto known = std::ranges::find_if(
        knownNames, [&](const char* name) { return std::ranges::find(listed, name) != listed.end(); });
    return known == knownNames.end() ? nullptr : *known;
}

} // namespace

ForkAttributes forkAttributesOfItem(const std::string& path) {
    // The kernel allocates the offered size, so the one for nearly every list comes first, then the maximum.
    std::array<char, 4096> shortList{};
    std::vector<char> longList;
    std::span<char> buffer(shortList);
    auto length = llistxattr(path.c_str(), buffer.data(), buffer.size());
    if (length < 0 && errno == ERANGE) {
        longList.resize(XATTR_LIST_MAX);
        buffer = longList;
        length = llistxattr(path.c_str(), buffer.data(), buffer.size());
    }
    if (length <= 0) {
        return {};
    }
    const auto listed =
        nonEmptyPieces(std::string_view(buffer.data(), static_cast<std::size_t>(length)), '\0');
    return {firstOf(resourceForkNames, listed), firstOf(finderInfoNames, listed)};
}

std::optional<std::int64_t> attributeSize(const std::string& path, const char* name) {
    const auto size = lgetxattr(path.c_str(), name, nullptr, 0);
    return size < 0 ? std::nullopt : std::optional<std::int64_t>(size);
}

std::optional<FinderInfo> readFinderInfo(const std::string& path, const char* name) {
    FinderInfo value{};
    const auto length = lgetxattr(path.c_str(), name, value.data(), value.size());
    return std::cmp_equal(length, value.size()) ? std::optional(value) : std::nullopt;
}

} // namespace tolvane::platform
