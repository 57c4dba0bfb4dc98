// Writes a bookmark of a wanted length to standard output, for bench/run to measure how the time of reading
// it grows.
//
// Usage: tolvane-bench-bookmark SHAPE BYTES, where SHAPE is "components", "items" or "shared". The length
// comes out near BYTES.

#include "bench/Bookmarks.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace {

using namespace tolvane;

using Make = platform::Data (*)(std::size_t);

constexpr std::array<std::pair<std::string_view, Make>, 3> shapes{
    {{"components", bench::withComponents},
     {"items", bench::withItems},
     {"shared", bench::withSharedValues}}};

/// How many elements make about so many bytes; 1 at least.
std::size_t countFor(Make make, std::size_t wanted) {
    constexpr std::size_t sample = 1000;
    return std::max<std::size_t>(1, wanted * sample / make(sample).size());
}

} // namespace

int main(int count, char** arguments) {
    const std::string_view name = count == 3 ? arguments[1] : "";
    const std::string_view bytes = count == 3 ? arguments[2] : "";
    const auto* const shape = std::ranges::find(shapes, name, &std::pair<std::string_view, Make>::first);
    std::size_t wanted = 0;
    const auto [end, fault] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), wanted);
    if (shape == shapes.end() || fault != std::errc() || end != bytes.data() + bytes.size()) {
        return 2;
    }
    const platform::Data bookmark = shape->second(countFor(shape->second, wanted));
    const bool written = std::fwrite(bookmark.data(), 1, bookmark.size(), stdout) == bookmark.size();
    return written && !bookmark.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}
