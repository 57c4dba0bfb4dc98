#include "containers/ContainerContents.h"

#include <algorithm>

namespace tolvane::containers {

using namespace platform;

namespace {

Error failureOf(const std::error_code& code) {
    return posixError(code.value());
}

} // namespace

Result<std::optional<Data>> containerContents(
    const std::string& path, const FileContents& contents, const BeforeManyBytes& beforeManyBytes) {
    const auto file = contents.openForReading(path);
    if (!file) {
        return std::unexpected(failureOf(file.error()));
    }
    const auto size = (*file)->size();
    if (!size) {
        return std::unexpected(failureOf(size.error()));
    }
    Data bytes(std::min<std::uint64_t>(*size, containerFrontLength));
    const auto front = (*file)->read(0, bytes);
    if (!front) {
        return std::unexpected(failureOf(front.error()));
    }
    bytes.resize(*front);
    if (bytes.empty() || !mayBeContainer(bytes)) {
        return std::nullopt;
    }
    if (*size > mostContainerBytes) {
        return std::unexpected(cocoaError(NSFileReadUnknownError, "more than 256 MiB are not searched"));
    }
    if (*size > fewBytes && beforeManyBytes) {
        beforeManyBytes();
    }
    bytes.resize(*size);
    const auto all = (*file)->read(*front, std::span(bytes).subspan(*front));
    if (!all) {
        return std::unexpected(failureOf(all.error()));
    }
    bytes.resize(*front + *all);
    return bytes;
}

} // namespace tolvane::containers
