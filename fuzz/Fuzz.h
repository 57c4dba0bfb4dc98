/// What every fuzz target needs.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::fuzz {

/// Aborts the program, which is how a target reports a finding.
inline void require(bool condition, std::string_view promise) {
    if (!condition) {
        std::cerr << "Broken promise: " << promise << '\n';
        std::abort();
    }
}

inline std::span<const std::byte> bytesOf(const std::uint8_t* data, std::size_t size) {
    return std::as_bytes(std::span(data, size));
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Removes and returns everything up to the next NUL, and removes the NUL; the rest if there is none.
inline std::string_view takeUntilNul(std::string_view& rest) {
    const std::size_t end = std::min(rest.find('\0'), rest.size());
    const std::string_view taken = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return taken;
}

/// The NUL-terminated words of a command line.
inline std::vector<std::string> wordsIn(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty()) {
        words.emplace_back(takeUntilNul(text));
    }
    return words;
}

} // namespace tolvane::fuzz

/// Called by the fuzzer, which looks for this name, with one input after the other.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
