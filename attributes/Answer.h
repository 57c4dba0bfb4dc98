#pragma once

#include "attributes/Explanation.h"
#include "platform/values/Date.h"
#include "platform/values/Value.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::attributes {

/// The text with invisible and misleading characters written out ("⟨LF⟩"), and U+FFFD for what is not UTF-8.
std::string visibleText(std::string_view bytes);

/// "2020-01-17 19:27:12.5 UTC", without a fraction of zero.
std::string dateText(const platform::Date& date);

/// The same of a date that was stored as a double, which is exact to the microsecond.
std::string dateTextOfDouble(const platform::Date& date);

/// "0x1f", with at least this many digits.
std::string hexNumber(std::uint64_t number, std::size_t digits = 1);

/// "01020304", whole.
std::string hexDigits(std::span<const std::byte> bytes);

/// A bit, or several of them, and what it is called.
struct Flag {
    std::uint64_t bits;
    std::string_view name;
};

/// The names of the flags that are set, divided by commas, and the bits that none of them has as a number;
/// "none" if no bit is set.
std::string flagNames(std::uint64_t number, std::span<const Flag> flags);

/// A number and what it is called.
struct Named {
    std::uint64_t number;
    std::string_view name;
};

/// The name of a number, empty if it has none.
std::string_view nameIn(std::span<const Named> names, std::uint64_t number);

/// Adds fields to an explanation, within its limits.
class Answer {
public:
    /// Both outlive the answer.
    Answer(Explanation& explanation, const Questions& questions)
        : explanation_(explanation)
        , questions_(questions) {}

    void title(std::string_view text) { explanation_.title = visibleText(text); }
    void summary(std::string_view text) { explanation_.summary = visibleText(text); }
    void certainty(Certainty certainty) { explanation_.certainty = certainty; }
    void note(std::string_view text);

    /// The text is made visible.
    void add(std::string_view name, std::string_view text, platform::Value value);

    void text(std::string_view name, std::string_view text);
    void number(std::string_view name, std::uint64_t number, std::string_view unit = {});
    void signedNumber(std::string_view name, std::int64_t number);
    void hex(std::string_view name, std::uint64_t number, std::size_t digits = 1);
    void yes(std::string_view name, bool is);
    void date(std::string_view name, const platform::Date& date);
    void uuid(std::string_view name, std::span<const std::byte> sixteenBytes);
    void bytes(std::string_view name, std::span<const std::byte> bytes);
    /// "download, translocate (0x0081)"
    void flags(
        std::string_view name, std::uint64_t number, std::span<const Flag> flags, std::size_t digits = 1);
    /// "sha256 (4)"; "unknown (99)" without a name.
    void named(std::string_view name, std::uint64_t number, std::span<const Named> names);
    /// "1000 (nelly)"; the number alone if the account's name is not known.
    void account(std::string_view name, AccountKind kind, std::uint32_t number);

    /// "nelly", or the number if the account's name is not known.
    std::string accountText(AccountKind kind, std::uint32_t number) const;

    std::size_t fieldCount() const { return explanation_.fields.size() + omitted_; }

    /// Notes how many fields were left out, if any.
    void finish();

private:
    Explanation& explanation_;
    const Questions& questions_;
    std::size_t textSize_ = 0;
    std::size_t omitted_ = 0;
    std::size_t omittedNotes_ = 0;
};

} // namespace tolvane::attributes
