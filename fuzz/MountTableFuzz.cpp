// Reads any text as the kernel's list of mounts, and walks to whatever is mounted.
#include "fuzz/Fuzz.h"
#include "platform/linux/MountTable.h"

#include <algorithm>
#include <string>
#include <vector>
#include <sys/sysmacros.h>

namespace {

using namespace tolvane;

/// As the kernel escapes it.
std::string escaped(std::string_view bytes) {
    std::string field;
    for (const char c : bytes) {
        if (std::string_view(" \t\n\\").contains(c)) {
            const auto byte = static_cast<unsigned char>(c);
            field += '\\';
            for (const unsigned shift : {6U, 3U, 0U}) {
                field += static_cast<char>('0' + ((byte >> shift) & 7U));
            }
        } else {
            field += c;
        }
    }
    return field;
}

std::string lineOf(const platform::Mount& mount) {
    return std::to_string(mount.id) + ' ' + std::to_string(mount.parent) + ' '
           + std::to_string(major(mount.device)) + ':' + std::to_string(minor(mount.device)) + ' '
           + escaped(mount.root) + ' ' + escaped(mount.mountPoint) + (mount.isReadOnly ? " ro" : " rw")
           + " shared:1 - " + escaped(mount.type) + ' ' + escaped(mount.source) + ' '
           + escaped(mount.superOptions) + '\n';
}

void checkWay(const platform::MountTable& table, std::string_view path) {
    const auto components = static_cast<std::size_t>(std::ranges::count(path, '/'));
    std::size_t depth = 0;
    for (const platform::MountOnTheWay& step : table.onTheWayTo(path)) {
        fuzz::require(
            step.mount != nullptr && table.withID(step.mount->id) != nullptr, "each step leads to a mount");
        fuzz::require(step.depth >= depth && step.depth <= components, "the way leads down");
        fuzz::require(path.starts_with(step.mount->mountPoint), "what is on the way is above the path");
        depth = step.depth;
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    const auto table = platform::MountTable::parse(text);
    const auto lines = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
    fuzz::require(table.mounts().size() <= lines, "a line tells of one mount");

    std::string written;
    for (const platform::Mount& mount : table.mounts()) {
        fuzz::require(mount.mountPoint.starts_with('/') && !mount.type.empty(), "a mount is somewhere");
        const platform::Mount* const found = table.withID(mount.id);
        fuzz::require(found != nullptr && found->id == mount.id, "a mount is found by its number");
        written += lineOf(mount);
    }
    fuzz::require(
        platform::MountTable::parse(written).mounts() == table.mounts(),
        "what was read can be written and read");

    // Lists of the kernel are not this contrary: what takes a step for each pair of lines is asked of short
    // ones.
    constexpr std::size_t mostMounts = 40;
    if (table.mounts().size() <= mostMounts) {
        for (const platform::Mount& mount : table.mounts()) {
            checkWay(table, mount.mountPoint);
            const platform::Mount* const topmost = table.topmostAt(mount.mountPoint);
            fuzz::require(
                topmost == nullptr || topmost->mountPoint == mount.mountPoint, "a mount is where it is");
        }
        const auto reachable = table.reachable();
        fuzz::require(std::ranges::is_sorted(reachable), "the kernel's order stays");
        fuzz::require(reachable.size() <= table.mounts().size(), "no mount comes twice");
    }
    return 0;
}
