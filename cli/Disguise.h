#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::cli {

/// Arguments as the option parser is shown them. The parser reads meanings into some names ("++", "[a,b]",
/// the names of commands), so in place of every name it is shown a placeholder with a number, which is no
/// part of any argument.
///
/// A name is what does not start with a dash, a lone dash, what stands behind the "=" of a long option, and
/// all that follows "--", which is left out then. The words that say what is to be done stay.
class Disguise {
public:
    /// The first `commandWords` names stay.
    Disguise(std::span<const std::string> arguments, std::size_t commandWords);

    const std::vector<std::string>& shown() const { return shown_; }

    /// The name that a placeholder stands for; nothing for any other text.
    std::optional<std::string> nameBehind(std::string_view text) const;

    /// A text from the parser with the names put back in: a message, or what it took for the value of an
    /// option, of which only a part may be a name.
    std::string withNames(const std::string& text) const;

private:
    std::string placeholderFor(std::string_view name);

    std::string placeholder_ = "name#";
    std::vector<std::string> shown_;
    std::vector<std::string> names_;
};

} // namespace tolvane::cli
