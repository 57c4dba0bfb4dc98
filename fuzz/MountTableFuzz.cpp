// Parses any text as the kernel's list of mounts, and walks to everything that is mounted.
#include "fuzz/Fuzz.h"
#include "platform/linux/volumes/MountTable.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>
#include <sys/sysmacros.h>

namespace {

using namespace tolvane;

/// Escapes as the kernel does.
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

/// Walks to paths folder by folder, and compares the table with the lines of its text.
class Walker {
public:
    explicit Walker(const platform::MountTable& table) : table_(table), reachable_(table.reachable()) {
        std::vector<std::uint64_t> numbers;
        for (const platform::Mount& mount : table.mounts()) {
            numbers.push_back(mount.id);
        }
        std::ranges::sort(numbers);
        hasNumbersOnce_ = std::ranges::adjacent_find(numbers) == numbers.end();
    }

    void checkReachable() const {
        fuzz::require(
            std::ranges::adjacent_find(reachable_, std::greater_equal()) == reachable_.end(),
            "the kernel's order stays, and no mount comes twice");
        for (const platform::Mount* const mount : reachable_) {
            fuzz::require(
                table_.topmostAt(mount->mountPoint) == mount, "what is reachable is what its place leads to");
        }
        fuzz::require(
            table_.onTheWayTo("/").empty() || !reachable_.empty(), "what the way begins with is reachable");
    }

    void checkWay(const std::string& path) const {
        const auto way = table_.onTheWayTo(path);
        auto step = way.begin();
        const platform::Mount* ground = nullptr;
        std::string_view folder = "/";
        std::size_t end = 0;
        for (std::size_t depth = 0;; ++depth) {
            const bool comesToOne = step != way.end() && step->depth == depth;
            const platform::Mount* const here = comesToOne ? (step++)->mount : nullptr;
            fuzz::require(!comesToOne || here != nullptr, "each step leads to a mount");
            checkStep(folder, ground, here);
            ground = here != nullptr ? here : ground;
            if (path == "/" || end == path.size()) {
                break;
            }
            end = std::min(path.find('/', end + 1), path.size());
            folder = std::string_view(path).substr(0, end);
        }
        fuzz::require(step == way.end(), "the way leads down to the path and no further");

        const bool leadsToOne = ground != nullptr && ground->mountPoint == path;
        const platform::Mount* const topmost = table_.topmostAt(path);
        fuzz::require(
            topmost == (leadsToOne ? ground : nullptr), "the way to a mount ends with the topmost one");
        fuzz::require(
            topmost == nullptr || std::ranges::find(reachable_, topmost) != reachable_.end(),
            "what is topmost is reachable");
    }

private:
    /// Whether the list has this mount on that one; on the process's root if that is null.
    bool standsOn(const platform::Mount& mount, const platform::Mount* below) const {
        return below != nullptr ? mount.parent == below->id
                                : mount.parent == mount.id || table_.withID(mount.parent) == nullptr;
    }

    /// Requires that entering a folder from the ground reaches this mount, or none if it is null.
    void checkStep(
        std::string_view folder, const platform::Mount* ground, const platform::Mount* here) const {
        const platform::Mount* const top = here != nullptr ? here : ground;
        bool hasBelow = here == nullptr || standsOn(*here, ground);
        for (const platform::Mount& mount : table_.mounts()) {
            if (&mount == top || mount.mountPoint != folder) {
                continue;
            }
            hasBelow = hasBelow || mount.id == here->parent;
            // Mounts can cover each other in a circle only if numbers occur twice, which the kernel's do not.
            fuzz::require(
                !hasNumbersOnce_ || !standsOn(mount, top), "a mount that covers the ground is come to");
        }
        fuzz::require(hasBelow, "a mount stands on the one before it, or on another at its place");
        fuzz::require(
            here == nullptr || here->mountPoint == folder, "a mount is come to where it is mounted");
    }

    const platform::MountTable& table_;
    std::vector<const platform::Mount*> reachable_;
    bool hasNumbersOnce_ = false;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    const auto table = platform::MountTable::parse(text);
    const auto lines = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
    fuzz::require(table.mounts().size() <= lines, "a line describes one mount");

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

    // The kernel's lists are not this contradictory; what takes a step for each pair of lines is checked for
    // short ones only.
    constexpr std::size_t mostMounts = 40;
    if (table.mounts().size() <= mostMounts) {
        const Walker walker(table);
        walker.checkReachable();
        walker.checkWay("/");
        for (const platform::Mount& mount : table.mounts()) {
            walker.checkWay(mount.mountPoint);
            walker.checkWay(mount.mountPoint + "/below");
        }
    }
    return 0;
}
