#include "inspect/ExtendedAttributes.h"

#include "platform/values/FatalError.h"
#include "platform/values/Pieces.h"
#include "platform/values/Utf8.h"

namespace tolvane::inspect {

using platform::ExtendedAttributeCalls;
using platform::posixError;
using platform::Result;

Result<std::vector<std::string>> xattrNames(const char* path, const ExtendedAttributeCalls& calls) {
    const ExtendedAttributeCalls::Answer size = calls.listxattr(path, {});
    if (!size) {
        return std::unexpected(posixError(size.error()));
    }

    // If the list has become shorter, zeros at the end remain, which splitting ignores.
    std::vector<char> buffer(static_cast<std::size_t>(*size), '\0');
    const ExtendedAttributeCalls::Answer read = calls.listxattr(path, buffer);
    if (!read) {
        return std::unexpected(posixError(read.error()));
    }

    std::vector<std::string> names;
    for (const std::string_view name :
         platform::nonEmptyPieces(std::string_view(buffer.data(), buffer.size()), '\0')) {
        if (platform::isValidUtf8(name)) {
            names.emplace_back(name);
        }
    }
    return names;
}

Result<std::int64_t> xattrValueSize(
    const char* path, const std::string& name, const ExtendedAttributeCalls& calls) {
    const ExtendedAttributeCalls::Answer size = calls.getxattr(path, name.c_str(), {});
    if (!size) {
        return std::unexpected(posixError(size.error()));
    }
    return *size;
}

Result<std::int64_t> totalXattrSize(const platform::URL& url, const ExtendedAttributeCalls& calls) {
    const std::optional<std::string> representation = url.fileSystemRepresentation();
    const char* path = representation ? representation->c_str() : nullptr;

    const Result<std::vector<std::string>> names = xattrNames(path, calls);
    if (!names) {
        return std::unexpected(names.error());
    }

    std::int64_t total = 0;
    for (const std::string& name : *names) {
        const Result<std::int64_t> size = xattrValueSize(path, name, calls);
        if (!size) {
            return size;
        }
        total = platform::checkedAdd(total, *size, "the sum of the extended attributes' sizes");
    }
    return total;
}

} // namespace tolvane::inspect
