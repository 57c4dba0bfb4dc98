// Reads any stream as NUL-terminated names, in pieces of any size, and uses each as a file name.
#include "cli/Names.h"
#include "fuzz/Fuzz.h"
#include "platform/values/Utf8.h"

#include <cerrno>
#include <string>
#include <vector>

namespace {

using namespace tolvane;

/// Returns its input in pieces of different sizes.
class Pieces final : public platform::InputStream {
public:
    Pieces(std::string_view bytes, std::size_t longest) : rest_(bytes), longest_(longest) {}

    platform::Result<std::size_t> read(std::span<char> buffer) override {
        piece_ = piece_ % longest_ + 1;
        const std::size_t count = std::min({piece_, buffer.size(), rest_.size()});
        std::ranges::copy(rest_.substr(0, count), buffer.begin());
        rest_.remove_prefix(count);
        return count;
    }

private:
    std::string_view rest_;
    std::size_t longest_;
    std::size_t piece_ = 0;
};

std::vector<std::string> namesIn(std::string_view bytes, std::size_t longestPiece) {
    Pieces pieces(bytes, longestPiece);
    cli::NulSeparatedNames reader(pieces);
    std::vector<std::string> names;
    while (true) {
        auto name = reader.next();
        fuzz::require(name.has_value(), "a stream that can be read is read");
        if (!*name) {
            return names;
        }
        names.push_back(**name);
    }
}

void checkURL(const std::string& name, const platform::Result<std::string>& folder) {
    const auto url = cli::urlOfName(name, folder);
    const bool isRefused = name.empty() || name.size() >= cli::NulSeparatedNames::longestName;
    if (isRefused) {
        fuzz::require(!url && !url.error().localizedDescription().empty(), "no name has no URL");
        return;
    }
    fuzz::require(url.has_value() == (folder || name.starts_with('/')), "only a folder can be missing");
    if (url) {
        fuzz::require(url->path().starts_with('/'), "a name becomes an absolute path");
        fuzz::require(url->fileSystemRepresentation() == url->path(), "and goes to the system as it is");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view stream = fuzz::textOf(data + 1, size - 1);
    const std::vector<std::string> names = namesIn(stream, data[0] * std::size_t{64} + 1);
    std::vector<std::string> expected = fuzz::wordsIn(stream);
    for (std::string& name : expected) {
        name.resize(std::min(name.size(), cli::NulSeparatedNames::longestName));
    }
    fuzz::require(names == expected, "names are what stands between the NULs");
    cli::ListedNames listed(names);
    for (const std::string& name : names) {
        const auto next = listed.next();
        fuzz::require(next && *next == name, "listed names come one by one");
        checkURL(name, "/some/folder");
        checkURL(name, std::unexpected(platform::posixError(EACCES)));
    }
    const auto end = listed.next();
    fuzz::require(end && !*end, "and end");
    return 0;
}
