#include "inspect/FileReferenceURL.h"

#include <cstring>

namespace tolvane::inspect {

namespace {

/// Overlays the 16-byte resource identifier, in the machine's byte order.
struct C {
    std::uint64_t f; ///< The file number.
    std::uint64_t d; ///< The device number.
};
static_assert(sizeof(C) == 16);

} // namespace

std::optional<std::string> getFileReferenceURL(
    const platform::URL& url, const platform::URLResources& resources) {
    static constexpr std::array<std::string_view, 1> keys{platform::NSURLFileResourceIdentifierKey};
    const auto values = resources.resourceValuesForKeys(url, keys);
    if (!values) {
        return std::nullopt;
    }
    const platform::Value* value = values->find(platform::NSURLFileResourceIdentifierKey);
    if (value == nullptr) {
        return std::nullopt;
    }
    const auto* bytes = value->as<platform::Data>();
    if (bytes == nullptr || bytes->size() != sizeof(C)) {
        return std::nullopt;
    }

    C identifier{};
    std::memcpy(&identifier, bytes->data(), sizeof identifier);
    // The device comes first in the text but second in the identifier.
    return "file:///.file/id=" + std::to_string(identifier.d) + "." + std::to_string(identifier.f);
}

} // namespace tolvane::inspect
