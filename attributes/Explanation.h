/// What an extended attribute means, in words.
#pragma once

#include "platform/values/ItemKind.h"
#include "platform/values/Value.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::attributes {

/// How sure an explanation is.
enum class Certainty {
    documented, ///< The format is published by those who write it.
    observed,   ///< Worked out by third parties, and agrees with the attributes seen so far.
    guess,      ///< The name is unknown; the value looks like this.
    opaque      ///< Known, but only its writer can read it.
};

/// "documented" and so on.
std::string_view nameOf(Certainty certainty);

/// One fact of a value. Invisible and misleading characters of `text` are written out ("⟨U+202E⟩"); `value`
/// has the same fact with its type, and texts as they are, with U+FFFD for what is not UTF-8.
struct Field {
    std::string name;
    std::string text;
    platform::Value value;
};

/// All texts are valid UTF-8.
struct Explanation {
    std::string name;  ///< As it was given, with U+FFFD for what is not UTF-8.
    std::string title; ///< "Quarantine"
    /// One sentence: what it is, who writes it, and the gist of the value.
    std::string summary;
    Certainty certainty = Certainty::documented;
    std::vector<Field> fields;      ///< In reading order.
    std::vector<std::string> notes; ///< What was left over, or was not as expected.
};

enum class AccountKind { user, group };

/// What a caller may know. Unanswered questions leave out names and words, nothing else.
struct Questions {
    /// The name of an account; nothing if it has none.
    std::function<std::optional<std::string>(AccountKind kind, std::uint32_t number)> accountName;
    /// What the attribute belongs to.
    std::optional<platform::ItemKind> itemKind;
};

/// No explanation has more fields than this, or more text in them; what is left out is noted.
inline constexpr std::size_t mostFields = 10'000;
inline constexpr std::size_t mostText = std::size_t{4} << 20U;

/// Explains an attribute by its name and its untrusted value. A value that does not have exactly the expected
/// form becomes one field "Bytes", and a note says where it stopped fitting. Names that are not known get at
/// most one guess. Nothing that the value names is opened. Time and memory are linear in the value's length,
/// apart from compressed and shared contents, which are limited.
Explanation explain(std::string_view name, std::span<const std::byte> value, const Questions& questions = {});

} // namespace tolvane::attributes
