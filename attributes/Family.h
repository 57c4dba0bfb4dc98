/// What the sources of the attribute families share.
#pragma once

#include "attributes/Answer.h"
#include "attributes/Explanation.h"

#include <cstddef>
#include <expected>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::attributes {

/// Where a value does not have its form, and what was expected there.
struct Misfit {
    std::size_t offset = 0;
    std::string expected;
};

using Outcome = std::expected<void, Misfit>;

inline std::unexpected<Misfit> misfit(std::size_t offset, std::string expected) {
    return std::unexpected(Misfit{offset, std::move(expected)});
}

/// How deep values may lie in values: attributes in companion files, property lists in data.
inline constexpr unsigned deepestValue = 4;

/// What a family explains.
struct Subject {
    std::string_view name;  ///< As it is looked up (`AttributeName`).
    std::string_view real;  ///< As it was given.
    std::string_view label; ///< What the family's row calls the only field.
    std::span<const std::byte> bytes;
    const Questions& questions;
    unsigned depth = 0; ///< In how many values this one lies.
};

/// Fills in fields, and replaces the row's summary where the value says more. After a misfit the answer so
/// far is dropped.
using Decoder = Outcome (*)(const Subject& subject, Answer& answer);

/// A row of the table of names. A name that ends in "*" is the beginning of many.
struct Family {
    std::string_view name;
    std::string_view title;
    std::string_view summary;
    Certainty certainty;
    Decoder decode;
    std::string_view label = {};
};

/// The row of a name; null if there is none. An exact name precedes a beginning, and a longer one a shorter.
const Family* familyNamed(std::string_view name);

/// Explains a value within another one.
Explanation explainWithin(const Subject& outer, std::string_view name, std::span<const std::byte> value);

/// Adds the fields of an explanation under a common heading.
void addNested(Answer& answer, std::string_view heading, const Explanation& nested);

/// The value's bytes as characters.
inline std::string_view textOf(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// The same without a NUL at the end, if there is one.
inline std::string_view textWithoutNul(std::span<const std::byte> bytes) {
    const std::string_view text = textOf(bytes);
    return text.ends_with('\0') ? text.substr(0, text.size() - 1) : text;
}

} // namespace tolvane::attributes
