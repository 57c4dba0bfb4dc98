#pragma once

#include "containers/Finding.h"
#include "containers/Neighbour.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Finding every bookmark and alias record in a file.
namespace tolvane::containers {

/// Longer files are not searched.
inline constexpr std::size_t mostContainerBytes = std::size_t{256} << 20U;

/// This many bytes from the front of a file are enough for `mayBeContainer`.
inline constexpr std::size_t containerFrontLength = 4096;

/// Up to so many bytes of a file may be held by each of several threads.
inline constexpr std::size_t fewBytes = std::size_t{16} << 20U;

/// Called before more than `fewBytes` of a file are held, perhaps several times, so that of several threads
/// one after the other does so.
using BeforeManyBytes = std::function<void()>;

/// False if a file with these first bytes is no container. Any text may be one.
bool mayBeContainer(std::span<const std::byte> front);

/// What a container holds.
struct FoundBookmarks {
    /// What kind of container it is, one word: "bookmark", "aliasFile", "aliasRecord", "folderSettings",
    /// "appleDouble", "resourceFork", "xml", "text", or a kind of property list (PropertyListWalk.h).
    std::string_view container;

    std::vector<Finding> findings; ///< In the container's order.

    /// Sentences about parts that could not be read or were left out.
    std::vector<std::string> complaints;
};

/// Finds the bookmarks, alias records and addresses in a file, which is recognised by its content alone.
/// A container may be compressed by gzip; 128 MiB of it are inflated at most. Nothing for files that are no
/// container. Nothing that the findings name is looked at.
///
/// Depth, number and length are limited, so that memory and time are linear in the length of the bytes.
///
/// Without a composed form names that differ past ASCII are not compared with their neighbours.
std::optional<FoundBookmarks> findBookmarks(
    std::span<const std::byte> bytes,
    const ComposedText& composed = {},
    const BeforeManyBytes& beforeManyBytes = {});

/// Finds what an extended attribute of a file holds in its value: bookmarks, alias records, property lists,
/// or a resource fork with them. The container is "attributes"; steps begin with "/attributes/" and the name.
FoundBookmarks findBookmarksInAttribute(
    std::string_view name, std::span<const std::byte> value, const ComposedText& composed = {});

} // namespace tolvane::containers
