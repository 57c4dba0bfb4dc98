#include "platform/linux/types/LowerCase.h"

#include "platform/values/Utf8.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>

#include <algorithm>
#include <utility>

namespace tolvane::platform {

bool equalIgnoringAsciiCase(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, asciiLowerCase, asciiLowerCase);
}

std::optional<std::string> lowerCase(std::string_view utf8) {
    if (!isValidUtf8(utf8)) {
        return std::nullopt;
    }
    constexpr const char* rootLocale = "";
    std::string lower;
    icu::StringByteSink<std::string> sink(&lower);
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToLower(rootLocale, 0, utf8, sink, nullptr, status);
    return U_FAILURE(status) ? std::nullopt : std::optional(std::move(lower));
}

} // namespace tolvane::platform
