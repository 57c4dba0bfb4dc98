#pragma once

#include <cstddef>
#include <span>

namespace tolvane::platform {

/// True for bytes that begin as a property list in the binary format does.
bool isBinaryPropertyList(std::span<const std::byte> data);

/// Whether it is safe to have a property list parsed by a library that goes down into arrays and dictionaries
/// by recursion and copies what is referred to more than once. A list may have 10,000 arrays and dictionaries
/// and 200,000 elements; a binary one may name each array and dictionary once only, as those who write them
/// do, so that neither circles nor lists that multiply pass, and no key of wide characters may hold a NUL, at
/// which the library ends the program. False also for a binary list whose structure lies outside its bytes.
/// Lists that pass may still be malformed.
bool isPropertyListWithinBounds(std::span<const std::byte> data);

} // namespace tolvane::platform
