#pragma once

#include "platform/Date.h"
#include "platform/URL.h"

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

/// What a dictionary can hold. File attributes, resource values, property lists and bookmark properties all
/// share these types, and so does the one function that describes them (Description.h).
namespace tolvane::platform {

using Data = std::vector<std::byte>;

/// 128 bits in the order in which they are written.
struct UUID {
    std::array<std::byte, 16> bytes{};

    /// 36 characters, upper case, with hyphens.
    std::string text() const;

    friend bool operator==(const UUID&, const UUID&) = default;
};

/// The null object, which collections use for "no value here".
struct Null {
    friend bool operator==(const Null&, const Null&) = default;
};

using Array = std::vector<Value>;

/// A dictionary with text keys. Iteration is stable: entries come in ascending order of their keys, compared
/// by UTF-16 code unit as the platform sorts them. Keys are UTF-8.
class Dictionary {
public:
    struct Entry;

    Dictionary();
    Dictionary(std::initializer_list<Entry> entries);

    /// From entries in any order, sorted once; of several with one key the last counts. Adding many entries
    /// one by one takes time that grows with the square of their number.
    static Dictionary fromEntries(std::vector<Entry> entries);

    Dictionary(const Dictionary& other);
    Dictionary(Dictionary&& other) noexcept;
    Dictionary& operator=(const Dictionary& other);
    Dictionary& operator=(Dictionary&& other) noexcept;
    ~Dictionary();

    /// The value of a key, or null when there is no such entry. Valid until the dictionary changes.
    const Value* find(std::string_view key) const;

    /// Makes room for this many entries at once.
    void reserve(std::size_t count);

    /// Adds an entry, or replaces the value of the one that is there.
    void set(std::string_view key, Value value);

    bool empty() const { return entries_.empty(); }
    std::size_t size() const;

    const Entry* begin() const;
    const Entry* end() const;

    friend bool operator==(const Dictionary& a, const Dictionary& b);

private:
    std::vector<Entry> entries_;
};

/// True when a variant has an alternative of exactly this type.
template <typename Kind, typename Variant>
inline constexpr bool isAlternativeOf = false;
template <typename Kind, typename... Kinds>
inline constexpr bool isAlternativeOf<Kind, std::variant<Kinds...>> = (std::is_same_v<Kind, Kinds> || ...);

/// One value of any of the kinds that a dictionary can hold.
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

    // NOLINTBEGIN(google-explicit-constructor): whatever a dictionary can hold is to be written there as it
    // is.
    /// From exactly one of the kinds; nothing is converted on the way in, so an integer keeps its width.
    template <typename Kind>
        requires isAlternativeOf<std::remove_cvref_t<Kind>, Storage>
    Value(Kind&& kind) : storage_(std::forward<Kind>(kind)) {}
    Value(const char* text) : storage_(std::string(text)) {}
    Value(std::string_view text) : storage_(std::string(text)) {}
    Value(std::nullptr_t) = delete;
    // NOLINTEND(google-explicit-constructor)

    /// The value as this kind, or null when it is of another.
    template <typename Kind>
    const Kind* as() const {
        return std::get_if<Kind>(&storage_);
    }

    /// Integers of any width that the target type can hold. Nothing for other kinds, booleans and fractions
    /// among them, and for integers out of range.
    std::optional<std::int64_t> exactInt64() const;
    std::optional<std::uint64_t> exactUInt64() const;

    /// The platform's readings of a number of any kind, boolean or fraction too: the signed one keeps the low
    /// 64 bits, the unsigned one the low 32. Fractions are cut towards zero and held within the signed 64-bit
    /// range first. A fraction that is NaN reads as 0. Nothing for other kinds.
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
