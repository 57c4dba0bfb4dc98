#include "platform/linux/types/ComposedText.h"

#include "platform/values/Utf8.h"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>

#include <utility>

namespace tolvane::platform {

std::optional<std::string> composedText(std::string_view utf8) {
    if (!isValidUtf8(utf8)) {
        return std::nullopt;
    }
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* const form = icu::Normalizer2::getNFCInstance(status);
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    std::string composed;
    icu::StringByteSink<std::string> sink(&composed);
    form->normalizeUTF8(0, utf8, sink, nullptr, status);
    return U_FAILURE(status) ? std::nullopt : std::optional(std::move(composed));
}

} // namespace tolvane::platform
