#pragma once

#include "containers/Finding.h"
#include "containers/Neighbour.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::containers {

/// How many findings are kept of one container.
inline constexpr std::size_t mostFindings = 100'000;

/// How many bytes their texts and data have together: one long name may stand beside each of many bookmarks.
inline constexpr std::size_t mostKeptBytes = std::size_t{256} << 20U;

/// What a container says of the item beside a bookmark.
struct Label {
    std::optional<std::string> name;
    std::optional<std::string> neighbour;
    std::vector<std::string> flags = {}; ///< In words.
};

/// Collects what is found in one container, and what was wrong with it.
class Collector {
public:
    explicit Collector(ComposedText composed = {}, std::size_t mostBytes = mostKeptBytes)
        : composed_(std::move(composed))
        , mostBytes_(mostBytes) {}

    /// Adds the bytes if they are a bookmark or an alias record, also if these cannot be read. False if they
    /// are neither.
    bool add(std::span<const std::byte> bytes, const std::string& where, const Label& label = {});

    /// Adds a finding without bytes.
    void add(Finding finding);

    /// Adds a sentence about a part of the container that cannot be read or was left out.
    void complain(std::string sentence);

    /// True once nothing more is kept, which a complaint then says.
    bool isFull() const { return isFull_; }

    std::vector<Finding>& findings() { return findings_; }
    std::vector<std::string>& complaints() { return complaints_; }

private:
    ComposedText composed_;
    std::size_t mostBytes_;
    std::vector<Finding> findings_;
    std::vector<std::string> complaints_;
    std::size_t keptBytes_ = 0;
    bool isFull_ = false;
};

/// True if the bytes begin like bookmark data or an alias file.
bool isLikeBookmark(std::span<const std::byte> bytes);

/// True if the bytes are like bookmark data, an alias file or an alias record, which a collector adds.
bool isLikeFinding(std::span<const std::byte> bytes);

} // namespace tolvane::containers
