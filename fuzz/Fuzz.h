// What every fuzz target needs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <span>
#include <string_view>

namespace tolvane::fuzz {

/// Ends the program, which is how a target reports a finding.
inline void require(bool condition, std::string_view promise) {
    if (!condition) {
        std::cerr << "Broken promise: " << promise << '\n';
        std::abort();
    }
}

inline std::span<const std::byte> bytesOf(const std::uint8_t* data, std::size_t size) {
    return std::as_bytes(std::span(data, size));
}

} // namespace tolvane::fuzz

/// Called by the fuzzer, which looks for this name, with one input after the other.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
