#include "platform/values/Value.h"

#include "platform/values/HexDigits.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tolvane::platform {

namespace {

/// Compares two UTF-8 texts by UTF-16 code unit. That is byte order except for one case: characters past
/// U+FFFF are surrogates in UTF-16 and so precede U+E000 to U+FFFF, whose UTF-8 begins with EE or EF.
bool utf16Less(std::string_view a, std::string_view b) {
    const auto [inA, inB] = std::ranges::mismatch(a, b);
    if (inA == a.end() || inB == b.end()) {
        return inA == a.end() && inB != b.end();
    }
    const auto byteA = static_cast<unsigned char>(*inA);
    const auto byteB = static_cast<unsigned char>(*inB);
    if (byteA >= 0xEE && byteB >= 0xEE && (byteA >= 0xF0) != (byteB >= 0xF0)) {
        return byteA >= 0xF0;
    }
    return byteA < byteB;
}

template <typename Kind>
constexpr bool isInteger = std::is_integral_v<Kind> && !std::is_same_v<Kind, bool>;

template <typename Target>
std::optional<Target> exactInteger(const Value::Storage& storage) {
    return std::visit(
        [](const auto& kind) -> std::optional<Target> {
            if constexpr (isInteger<std::remove_cvref_t<decltype(kind)>>) {
                if (std::in_range<Target>(kind)) {
                    return static_cast<Target>(kind);
                }
            }
            return std::nullopt;
        },
        storage);
}

} // namespace

std::string UUID::text() const {
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) {
            text += '-';
        }
        appendHex(text, std::to_integer<unsigned>(bytes.at(i)), 2, HexCase::upper);
    }
    return text;
}

Dictionary::Dictionary() = default;
Dictionary::Dictionary(const Dictionary& other) = default;
Dictionary::Dictionary(Dictionary&& other) noexcept = default;
Dictionary& Dictionary::operator=(Dictionary&& other) noexcept = default;
Dictionary::~Dictionary() = default;

Dictionary& Dictionary::operator=(const Dictionary& other) {
    // Copied first, since the other value may be an element of this one.
    std::vector<Entry> entries = other.entries_;
    entries_.swap(entries);
    return *this;
}

Dictionary::Dictionary(std::initializer_list<Entry> entries) {
    for (const Entry& entry : entries) {
        set(entry.key, entry.value);
    }
}

void Dictionary::reserve(std::size_t count) {
    entries_.reserve(count);
}

Dictionary Dictionary::fromEntries(std::vector<Entry> entries) {
    std::vector<std::size_t> order(entries.size());
    std::ranges::generate(order, [next = std::size_t{0}]() mutable { return next++; });
    std::ranges::sort(order, [&](std::size_t a, std::size_t b) {
        return entries[a].key == entries[b].key ? a < b : utf16Less(entries[a].key, entries[b].key);
    });
    Dictionary dictionary;
    dictionary.entries_.reserve(entries.size());
    for (const std::size_t index : order) {
        Entry& entry = entries[index];
        if (!dictionary.entries_.empty() && dictionary.entries_.back().key == entry.key) {
            dictionary.entries_.back().value = std::move(entry.value);
        } else {
            dictionary.entries_.push_back(std::move(entry));
        }
    }
    return dictionary;
}

const Value* Dictionary::find(std::string_view key) const {
    // In a small dictionary a linear search is faster.
    constexpr std::size_t smallSize = 16;
    if (entries_.size() <= smallSize) {
        const auto same = std::ranges::find(entries_, key, &Entry::key);
        return same != entries_.end() ? &same->value : nullptr;
    }
    const auto place = std::ranges::lower_bound(entries_, key, utf16Less, &Entry::key);
    return place != entries_.end() && place->key == key ? &place->value : nullptr;
}

void Dictionary::set(std::string_view key, Value value) {
    // Most dictionaries have a few entries, and many are filled in order.
    constexpr std::size_t usualSize = 4;
    if (entries_.capacity() == 0) {
        entries_.reserve(usualSize);
    }
    if (entries_.empty() || utf16Less(entries_.back().key, key)) {
        entries_.emplace_back(std::string(key), std::move(value));
        return;
    }
    const auto place = std::ranges::lower_bound(entries_, key, utf16Less, &Entry::key);
    if (place != entries_.end() && place->key == key) {
        place->value = std::move(value);
    } else {
        entries_.insert(place, Entry{std::string(key), std::move(value)});
    }
}

std::size_t Dictionary::size() const {
    return entries_.size();
}

const Dictionary::Entry* Dictionary::begin() const {
    return entries_.data();
}

const Dictionary::Entry* Dictionary::end() const {
    return entries_.data() + entries_.size();
}

bool operator==(const Dictionary& a, const Dictionary& b) {
    return a.entries_ == b.entries_;
}

std::optional<std::int64_t> Value::exactInt64() const {
    return exactInteger<std::int64_t>(storage_);
}

std::optional<std::uint64_t> Value::exactUInt64() const {
    return exactInteger<std::uint64_t>(storage_);
}

std::optional<std::int64_t> Value::integerValue() const {
    return std::visit(
        [](const auto& kind) -> std::optional<std::int64_t> {
            using Kind = std::remove_cvref_t<decltype(kind)>;
            if constexpr (std::is_floating_point_v<Kind>) {
                constexpr double twoToThe63 = 9'223'372'036'854'775'808.0;
                const auto number = static_cast<double>(kind);
                if (std::isnan(number)) {
                    return 0;
                }
                if (number >= twoToThe63) {
                    return std::numeric_limits<std::int64_t>::max();
                }
                if (number < -twoToThe63) {
                    return std::numeric_limits<std::int64_t>::min();
                }
                return static_cast<std::int64_t>(number);
            } else if constexpr (std::is_integral_v<Kind>) {
                return static_cast<std::int64_t>(kind);
            } else {
                return std::nullopt;
            }
        },
        storage_);
}

std::optional<std::uint32_t> Value::unsignedIntValue() const {
    const std::optional<std::int64_t> number = integerValue();
    if (!number) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(static_cast<std::uint64_t>(*number) & 0xFFFF'FFFFU);
}

} // namespace tolvane::platform
