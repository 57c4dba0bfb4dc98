#include "containers/Neighbour.h"

#include "platform/values/URL.h"

#include <algorithm>
#include <string>

namespace tolvane::containers {

namespace {

std::optional<std::string> pathOf(std::string_view neighbour) {
    if (neighbour.starts_with('/')) {
        return std::string(neighbour);
    }
    const auto url = platform::localFileURL(neighbour);
    if (!url || url->path().starts_with("/.file/id=")) {
        return std::nullopt;
    }
    return url->path();
}

std::string_view plainPath(std::string_view path) {
    constexpr std::string_view dataVolume = "/System/Volumes/Data";
    constexpr std::string_view privateFolder = "/private";
    while (path.size() > 1 && path.ends_with('/')) {
        path.remove_suffix(1);
    }
    if (path.starts_with(dataVolume) && path.substr(dataVolume.size()).starts_with('/')) {
        path.remove_prefix(dataVolume.size());
    }
    for (const std::string_view folder : {"/tmp", "/var", "/etc"}) {
        if (path.starts_with(privateFolder) && path.substr(privateFolder.size()).starts_with(folder)) {
            path.remove_prefix(privateFolder.size());
            break;
        }
    }
    return path;
}

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

} // namespace

std::optional<bool> namesAnotherItem(
    std::string_view path, std::string_view neighbour, const ComposedText& composed) {
    const std::optional<std::string> other = pathOf(neighbour);
    if (!other) {
        return std::nullopt;
    }
    const std::string_view a = plainPath(path);
    const std::string_view b = plainPath(*other);
    if (a == b) {
        return false;
    }
    if (isAscii(a) && isAscii(b)) {
        return true;
    }
    const auto one = composed ? composed(a) : std::nullopt;
    const auto another = composed ? composed(b) : std::nullopt;
    return one && another ? std::optional(*one != *another) : std::nullopt;
}

} // namespace tolvane::containers
