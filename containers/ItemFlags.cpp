#include "containers/ItemFlags.h"

#include "platform/values/HexDigits.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <ranges>

namespace tolvane::containers {

using platform::Dictionary;
using platform::Value;

namespace {

struct Bit {
    std::uint64_t mask;
    std::string_view set;
    std::string_view clear; ///< Empty if its absence says nothing.
};

constexpr std::array<Bit, 7> typeBits{
    {{0x2, "application", ""},
     {0x4, "login item", ""},
     {0x8, "agent", ""},
     {0x10, "daemon", ""},
     {0x20, "developer", ""},
     {0x10000, "legacy", ""},
     {0x80000, "curated", ""}}};

constexpr std::array<Bit, 4> dispositionBits{
    {{0x1, "enabled", "not enabled"},
     {0x2, "allowed", "not allowed"},
     {0x4, "perhaps hidden", ""},
     {0x8, "notified", "not notified"}}};

using Words = std::vector<std::string>;

void addBits(Words& words, std::uint64_t number, std::span<const Bit> bits) {
    for (const Bit& bit : bits) {
        const std::string_view word = (number & bit.mask) != 0 ? bit.set : bit.clear;
        if (!word.empty()) {
            words.emplace_back(word);
        }
        number &= ~bit.mask;
    }
    if (number != 0) {
        std::string digits = "0x";
        platform::appendHex(digits, number, 1);
        words.push_back(std::move(digits));
    }
}

std::optional<std::uint64_t> numberOf(const Dictionary& item, std::string_view key) {
    const Value* const value = item.find(key);
    return value != nullptr ? value->exactUInt64() : std::nullopt;
}

std::optional<bool> truthOf(const Dictionary& item, std::string_view key) {
    const Value* const value = item.find(key);
    if (value == nullptr) {
        return std::nullopt;
    }
    if (const auto* const truth = value->as<bool>()) {
        return *truth;
    }
    const auto number = value->exactUInt64();
    return number ? std::optional(*number != 0) : std::nullopt;
}

const Dictionary* dictionaryIn(const Dictionary& item, std::string_view key) {
    const Value* const value = item.find(key);
    return value != nullptr ? value->as<Dictionary>() : nullptr;
}

constexpr std::string_view listPrefix = "com.apple.LSSharedFileList.";

void addListFlags(Words& words, const Dictionary& item) {
    const Dictionary* const custom = dictionaryIn(item, "CustomItemProperties");
    if (custom != nullptr) {
        if (truthOf(*custom, "com.apple.LSSharedFileList.ItemIsHidden") == true) {
            words.emplace_back("hidden");
        }
        const Value* const special = custom->find("com.apple.LSSharedFileList.SpecialItemIdentifier");
        const auto* const text = special != nullptr ? special->as<std::string>() : nullptr;
        if (text != nullptr) {
            const bool isShort = text->starts_with(listPrefix);
            words.push_back("special item " + text->substr(isShort ? listPrefix.size() : 0));
        }
    }
    const Dictionary* const legacy =
        custom != nullptr ? dictionaryIn(*custom, "com.apple.loginitem.legacyprefs") : nullptr;
    if (truthOf(legacy != nullptr ? *legacy : item, "Hide") == true) {
        words.emplace_back("hidden at login");
    }
}

void addBackgroundFlags(Words& words, const Dictionary& item) {
    if (const auto disposition = numberOf(item, "disposition")) {
        addBits(words, numberOf(item, "type").value_or(0), typeBits);
        addBits(words, *disposition, dispositionBits);
    }
    if (truthOf(item, "hidden") == true) {
        words.emplace_back("hidden");
    }
}

void addActionFlags(Words& words, const Dictionary& item) {
    if (const auto isEnabled = truthOf(item, "enabled")) {
        words.emplace_back(*isEnabled ? "enabled" : "not enabled");
    }
}

bool isItemList(std::string_view kind) {
    constexpr std::array<std::string_view, 4> lists{
        "sharedFileList", "loginItems", "recentItems", "sidebarLists"};
    return std::ranges::find(lists, kind) != lists.end();
}

} // namespace

std::vector<std::string> itemFlags(std::string_view kind, std::span<const Dictionary* const> around) {
    const auto add = isItemList(kind)            ? &addListFlags
                     : kind == "backgroundItems" ? &addBackgroundFlags
                     : kind == "folderActions"   ? &addActionFlags
                                                 : nullptr;
    Words words;
    if (add == nullptr) {
        return words;
    }
    // The nearest that has any is the item; what is farther around is of others.
    for (const Dictionary* const item : std::views::reverse(around)) {
        add(words, *item);
        if (!words.empty()) {
            break;
        }
    }
    return words;
}

} // namespace tolvane::containers
