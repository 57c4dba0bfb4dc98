#include "platform/Base64.h"

#include <array>
#include <string_view>

namespace tolvane::platform {

std::string base64EncodedString(std::span<const std::byte> bytes) {
    static constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    while (!bytes.empty()) {
        const std::size_t count = bytes.size() < 3 ? bytes.size() : 3;
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            group = (group << 8U) | (i < count ? std::to_integer<std::uint32_t>(bytes[i]) : 0U);
        }
        const std::array<char, 4> characters{
            alphabet[group >> 18U], alphabet[(group >> 12U) & 63U],
            count > 1 ? alphabet[(group >> 6U) & 63U] : '=', count > 2 ? alphabet[group & 63U] : '='};
        text.append(characters.data(), characters.size());
        bytes = bytes.subspan(count);
    }
    return text;
}

} // namespace tolvane::platform
