#pragma once

#include "platform/values/Date.h"
#include "platform/values/URL.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

/// The types that a dictionary can hold. File attributes, resource values, property lists and bookmark
/// properties share them, and the function that describes them (Description.h).
namespace tolvane::platform {

using Data = std::vector<std::byte>;

/// 128 bits in written order.
struct UUID {
    std::array<std::byte, 16> bytes{};

    /// 36 characters, upper case, with hyphens.
    std::string text() const;

    friend bool operator==(const UUID&, const UUID&) = default;
};

/// The null object: "no value" in a collection.
struct Null {
    friend bool operator==(const Null&, const Null&) = default;
};

using Array = std::vector<Value>;

/// A dictionary with UTF-8 keys. Iteration is in ascending order of the keys by UTF-16 code unit, as the
/// platform sorts.
class Dictionary {
public:
    struct Entry;

    Dictionary();
    Dictionary(std::initializer_list<Entry> entries);

    /// From entries in any order, sorted once; of equal keys the last one counts. Adding many entries one by
    /// one takes quadratic time.
    static Dictionary fromEntries(std::vector<Entry> entries);

    Dictionary(const Dictionary& other);
    Dictionary(Dictionary&& other) noexcept;
    Dictionary& operator=(const Dictionary& other);
    Dictionary& operator=(Dictionary&& other) noexcept;
    ~Dictionary();

    /// The value of a key, or null. Valid until the dictionary changes.
    const Value* find(std::string_view key) const;

    /// Reserves room for this many entries.
    void reserve(std::size_t count);

    /// Adds an entry or replaces its value.
    void set(std::string_view key, Value value);

    bool empty() const { return entries_.empty(); }
    std::size_t size() const;

    const Entry* begin() const;
    const Entry* end() const;

    friend bool operator==(const Dictionary& a, const Dictionary& b);

private:
    std::vector<Entry> entries_;
};

/// True if a variant has exactly this alternative.
template <typename Kind, typename Variant>
inline constexpr bool isAlternativeOf = false;
template <typename Kind, typename... Kinds>
inline constexpr bool isAlternativeOf<Kind, std::variant<Kinds...>> = (std::is_same_v<Kind, Kinds> || ...);

/// One value of any type that a dictionary can hold.
class Value {
public:
    using Storage = std::variant<
        Null,
        bool,
        std::int8_t,
        std::int16_t,
        std::int32_t,
        std::int64_t,
        std::uint8_t,
        std::uint16_t,
        std::uint32_t,
        std::uint64_t,
        float,
        double,
        std::string,
        Date,
        Data,
        Array,
        Dictionary,
        URL,
        UUID>;

    Value() = default;

    // NOLINTBEGIN(google-explicit-constructor): dictionaries take plain values.
    /// From exactly one of the types, without conversion, so an integer keeps its width.
    template <typename Kind>
        requires isAlternativeOf<std::remove_cvref_t<Kind>, Storage>
    Value(Kind&& kind) : storage_(std::forward<Kind>(kind)) {}
    Value(const char* text) : storage_(std::string(text)) {}
    Value(std::string_view text) : storage_(std::string(text)) {}
    Value(std::nullptr_t) = delete;
    // NOLINTEND(google-explicit-constructor)

    /// The value as this type, or null if it has another.
    template <typename Kind>
    const Kind* as() const {
        return std::get_if<Kind>(&storage_);
    }

    /// Integers of any width that fit the target type. Nothing for out-of-range integers and other types,
    /// booleans and fractions included.
    std::optional<std::int64_t> exactInt64() const;
    std::optional<std::uint64_t> exactUInt64() const;

    /// The platform's conversions of a number of any type, booleans and fractions included: the signed one
    /// keeps the low 64 bits, the unsigned one the low 32. Fractions are truncated and clamped to the signed
    /// 64-bit range first; NaN is 0. Nothing for other types.
    std::optional<std::int64_t> integerValue() const;
    std::optional<std::uint32_t> unsignedIntValue() const;

    const Storage& storage() const { return storage_; }

    friend bool operator==(const Value& a, const Value& b) { return a.storage_ == b.storage_; }

private:
    Storage storage_;
};

struct Dictionary::Entry {
    std::string key;
    Value value;

    friend bool operator==(const Entry&, const Entry&) = default;
};

} // namespace tolvane::platform
