#include "inspect/ExtendedAttributes.h"

#include "platform/CheckedArithmetic.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace tolvane::inspect {

using platform::ExtendedAttributeCalls;
using platform::posixError;
using platform::Result;

Result<std::vector<std::string>> xattrNames(const char* path, const ExtendedAttributeCalls& calls) {
    const ExtendedAttributeCalls::Answer size = calls.listxattr(path, {});
    if (!size) {
        return std::unexpected(posixError(size.error()));
    }

    // A list that shrinks before it is read leaves zeros at the end, which the splitting passes over.
    std::vector<char> buffer(static_cast<std::size_t>(*size), '\0');
    const ExtendedAttributeCalls::Answer read = calls.listxattr(path, buffer);
    if (!read) {
        return std::unexpected(posixError(read.error()));
    }

    std::vector<std::string> names;
    std::string_view rest(buffer.data(), buffer.size());
    while (!rest.empty()) {
        const std::string_view piece = rest.substr(0, rest.find('\0'));
        if (!piece.empty() && platform::isValidUtf8(piece)) {
            names.emplace_back(piece);
        }
        rest.remove_prefix(std::min(piece.size() + 1, rest.size()));
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
