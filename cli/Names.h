#pragma once

#include "platform/services/Streams.h"
#include "platform/values/Error.h"
#include "platform/values/URL.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tolvane::cli {

/// The names to report on, one after the other.
class Names {
public:
    virtual ~Names() = default;

    /// The next name as raw bytes; nothing after the last one. Fails when the list cannot be read further.
    virtual platform::Result<std::optional<std::string>> next() = 0;

    /// Whether there may be a next name, and asking for it does not wait for what others do.
    virtual bool isNextAtHand() const = 0;
};

/// The file URL of a name. Relative names are in `currentFolder`, whose error they fail with; empty names and
/// those too long for any system call (NulSeparatedNames::longestName) fail too.
platform::Result<platform::URL> urlOfName(
    const std::string& name, const platform::Result<std::string>& currentFolder);

/// Names that were given one by one.
class ListedNames final : public Names {
public:
    /// `names` outlives this object.
    explicit ListedNames(std::span<const std::string> names) : rest_(names) {}

    platform::Result<std::optional<std::string>> next() override;
    bool isNextAtHand() const override { return !rest_.empty(); }

private:
    std::span<const std::string> rest_;
};

/// NUL-terminated names, read from a stream as needed in constant memory. The last NUL may be missing.
class NulSeparatedNames final : public Names {
public:
    /// A longer name is cut to this many bytes, so that a list without NULs costs no more; `urlOfName`
    /// refuses names of this length, as every system call would.
    static constexpr std::size_t longestName = 8'192;

    /// `stream` outlives this object.
    explicit NulSeparatedNames(platform::InputStream& stream) : stream_(stream), buffer_(65'536) {}

    platform::Result<std::optional<std::string>> next() override;
    bool isNextAtHand() const override;

private:
    platform::InputStream& stream_;
    std::vector<char> buffer_;
    std::span<const char> unread_;
};

} // namespace tolvane::cli
