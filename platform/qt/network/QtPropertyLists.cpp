#include "platform/qt/network/QtPropertyLists.h"

#include "platform/CocoaError.h"
#include "platform/qt/network/PropertyListBounds.h"

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>
#include <plist/plist.h>

namespace tolvane::platform {

namespace {

constexpr int deepestLevel = 512;

struct NodeDeleter {
    void operator()(void* node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, NodeDeleter>;

/// What libplist hands out is freed as C does.
struct MemoryDeleter {
    void operator()(void* memory) const { std::free(memory); } // NOLINT(cppcoreguidelines-no-malloc)
};
template <typename T>
using Memory = std::unique_ptr<T, MemoryDeleter>;

std::optional<Value> valueOf(plist_t node, int level);

std::optional<Value> arrayOf(plist_t node, int level) {
    Array array;
    array.reserve(plist_array_get_size(node));
    plist_array_iter next = nullptr;
    plist_array_new_iter(node, &next);
    const Memory<void> iterator(next);
    plist_t element = nullptr;
    plist_array_next_item(node, iterator.get(), &element);
    while (element != nullptr) {
        auto value = valueOf(element, level);
        if (!value) {
            return std::nullopt;
        }
        array.push_back(*std::move(value));
        plist_array_next_item(node, iterator.get(), &element);
    }
    return array;
}

std::optional<Value> dictionaryOf(plist_t node, int level) {
    std::vector<Dictionary::Entry> entries;
    entries.reserve(plist_dict_get_size(node));
    plist_dict_iter next = nullptr;
    plist_dict_new_iter(node, &next);
    const Memory<void> iterator(next);
    while (true) {
        char* name = nullptr;
        plist_t element = nullptr;
        plist_dict_next_item(node, iterator.get(), &name, &element);
        const Memory<char> key(name);
        if (element == nullptr || !key) {
            return Dictionary::fromEntries(std::move(entries));
        }
        auto value = valueOf(element, level);
        if (!value) {
            return std::nullopt;
        }
        entries.push_back({key.get(), *std::move(value)});
    }
}

std::string textOf(plist_t node) {
    std::uint64_t length = 0;
    const char* const text = plist_get_string_ptr(node, &length);
    return text == nullptr ? std::string() : std::string(text, length);
}

Data dataOf(plist_t node) {
    std::uint64_t length = 0;
    const char* const bytes = plist_get_data_ptr(node, &length);
    if (bytes == nullptr) {
        return {};
    }
    const auto* const first = reinterpret_cast<const std::byte*>(bytes);
    return {first, first + length};
}

Date dateOf(plist_t node) {
    constexpr double microsecondsInSecond = 1e6;
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return Date(seconds + microseconds / microsecondsInSecond);
}

/// Nothing for what is nested too deep, and for what is no value.
std::optional<Value> valueOf(plist_t node, int level) {
    if (level > deepestLevel) {
        return std::nullopt;
    }
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t truth = 0;
        plist_get_bool_val(node, &truth);
        return truth != 0;
    }
    case PLIST_UINT: {
        std::uint64_t number = 0;
        plist_get_uint_val(node, &number);
        return static_cast<std::int64_t>(number);
    }
    case PLIST_REAL: {
        double number = 0;
        plist_get_real_val(node, &number);
        return number;
    }
    case PLIST_UID: {
        std::uint64_t number = 0;
        plist_get_uid_val(node, &number);
        return number;
    }
    case PLIST_STRING:
        return textOf(node);
    case PLIST_DATE:
        return dateOf(node);
    case PLIST_DATA:
        return dataOf(node);
    case PLIST_ARRAY:
        return arrayOf(node, level + 1);
    case PLIST_DICT:
        return dictionaryOf(node, level + 1);
    default:
        return std::nullopt;
    }
}

} // namespace

Result<Value> QtPropertyLists::propertyListWithData(std::span<const std::byte> data) const {
    if (!data.empty() && data.size() <= std::numeric_limits<std::uint32_t>::max()
        && isPropertyListWithinBounds(data)) {
        const auto* const bytes = reinterpret_cast<const char*>(data.data());
        const auto length = static_cast<std::uint32_t>(data.size());
        plist_t read = nullptr;
        if (isBinaryPropertyList(data)) {
            plist_from_bin(bytes, length, &read);
        } else {
            plist_from_xml(bytes, length, &read);
        }
        const Node root(read);
        if (root) {
            if (auto value = valueOf(root.get(), 0)) {
                return *std::move(value);
            }
        }
    }
    return std::unexpected(
        cocoaError(NSPropertyListReadCorruptError, "The data is no property list that can be read."));
}

} // namespace tolvane::platform
