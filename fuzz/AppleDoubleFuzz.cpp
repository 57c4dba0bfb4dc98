// Parses any bytes as an AppleDouble file with its attributes and resource fork, and as a resource fork
// alone.
#include "fuzz/Fuzz.h"
#include "platform/appledouble/AppleDouble.h"
#include "platform/appledouble/ResourceFork.h"

namespace {

using namespace tolvane;
using Bytes = std::span<const std::byte>;

void requireWithin(Bytes part, Bytes whole, std::size_t offset, std::string_view promise) {
    fuzz::require(
        part.empty() || (part.data() == whole.data() + offset && part.size() <= whole.size() - offset),
        promise);
}

void checkFork(Bytes bytes) {
    const auto fork = platform::readResourceFork(bytes);
    if (!fork) {
        fuzz::require(fork.error().offset <= bytes.size(), "a fork's fault lies within the bytes");
        return;
    }
    fuzz::require(fork->resources.size() <= bytes.size() / 12, "each resource has its reference");
    for (const platform::ForkResource& resource : fork->resources) {
        requireWithin(resource.bytes, bytes, resource.offset, "a resource lies within its fork");
        fuzz::require(
            !resource.name || resource.nameText().size() >= resource.name->size(), "a name can be shown");
        fuzz::require(
            fork->find(resource.type, resource.number) != nullptr, "a resource is found by type and number");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes bytes = fuzz::bytesOf(data, size);
    checkFork(bytes);
    const auto file = platform::readAppleDouble(bytes);
    if (!file) {
        fuzz::require(file.error().offset <= size, "a fault lies within the bytes");
        return 0;
    }
    for (const platform::AppleDoubleEntry& entry : file->entries) {
        requireWithin(entry.bytes, bytes, entry.offset, "a part lies within its file");
    }
    if (const auto* const fork = file->entry(platform::apple_double_entry::resourceFork)) {
        checkFork(fork->bytes);
    }
    const auto block = platform::readAppleDoubleAttributes(*file, bytes);
    if (!block) {
        fuzz::require(block.error().offset <= size, "an attribute's fault lies within the bytes");
        return 0;
    }
    for (const platform::AppleDoubleAttribute& attribute : block->attributes) {
        fuzz::require(!attribute.name.empty() && !attribute.name.contains('\0'), "attributes have names");
        requireWithin(attribute.value, bytes, attribute.offset, "a value lies within its file");
    }
    return 0;
}
