#pragma once

#include "platform/services/Bookmarks.h"
#include "platform/values/Error.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What a bookmark stores beside what is so of the item that it led to, in words.
namespace tolvane::resolver {

/// The facts in pairs. Where the item's cannot be read, the failure says why, and only stored ones are there.
struct StoredAndFound {
    std::vector<platform::ComparedFact> facts;
    std::optional<platform::Error> failure = {};
};

/// Compares bookmark data with the item that it was resolved to, of which a new bookmark is made for that.
StoredAndFound storedAndFound(
    std::span<const std::byte> bookmark,
    const platform::ResolvedBookmark& resolved,
    const platform::Bookmarks& bookmarks,
    const platform::BookmarkComparer& compare);

/// Why the facts of an item are not there, in a sentence.
std::string itemNotComparedText(const platform::Error& failure);

/// How an item and its volume were found, in two sentences.
std::string howFoundText(const platform::BookmarkMatch& match);

/// What a fact is called: "Volume size" for "volumeCapacity". Other names are returned as they are.
std::string factTitle(std::string_view name);

/// "differs", "same", or "not compared" where one of the two is not known.
std::string_view agreementText(const platform::ComparedFact& fact);

/// A fact in bytes as they are stored: sizes with their unit, dates in UTC with all digits, numbers in the
/// path's order with "?" for those that are not known. Empty without a value.
std::string factText(std::string_view name, const std::optional<platform::Value>& value);

/// All of it for a terminal, in lines that end with a line feed: how the item was found, then each fact with
/// its agreement, and its value once if both are the same. `shown` makes a text fit for a line.
std::string storedAndFoundText(
    const platform::BookmarkMatch& match,
    const StoredAndFound& compared,
    const std::function<std::string(std::string_view)>& shown);

} // namespace tolvane::resolver
