/// Values of any type for the targets that write values.
#pragma once

#include "platform/values/Utf8.h"
#include "platform/values/Value.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::fuzz {

/// Makes one value from bytes, always the same from the same bytes. It has at most as many elements, and
/// texts and data at most as many bytes, as there were bytes; arrays and dictionaries are at most `deepest`
/// levels deep.
class AnyValue {
public:
    static constexpr std::size_t deepest = 12;

    explicit AnyValue(std::string_view bytes) : rest_(bytes) {}

    platform::Value value() { return value(0); }

private:
    std::uint64_t number(std::size_t length) {
        std::uint64_t taken = 0;
        for (; length > 0 && !rest_.empty(); --length) {
            taken = taken << 8U | static_cast<unsigned char>(rest_.front());
            rest_.remove_prefix(1);
        }
        return taken;
    }

    std::string_view text() {
        const std::size_t length = number(1) % 64;
        const std::string_view taken = rest_.substr(0, length);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    platform::Value value(std::size_t level) {
        constexpr unsigned kinds = 19;
        switch (number(1) % kinds) {
        case 0:
            return platform::Null{};
        case 1:
            return number(1) % 2 == 1;
        case 2:
            return static_cast<std::int8_t>(number(1));
        case 3:
            return static_cast<std::int16_t>(number(2));
        case 4:
            return static_cast<std::int32_t>(number(4));
        case 5:
            return static_cast<std::int64_t>(number(8));
        case 6:
            return static_cast<std::uint8_t>(number(1));
        case 7:
            return static_cast<std::uint16_t>(number(2));
        case 8:
            return static_cast<std::uint32_t>(number(4));
        case 9:
            return number(8);
        case 10:
            return std::bit_cast<float>(static_cast<std::uint32_t>(number(4)));
        case 11:
            return std::bit_cast<double>(number(8));
        case 12:
            return platform::Date(std::bit_cast<double>(number(8)));
        case 13: {
            const auto bytes = std::as_bytes(std::span(text()));
            return platform::Data(bytes.begin(), bytes.end());
        }
        case 14:
            return array(level);
        case 15:
            return dictionary(level);
        case 16:
            return platform::URL::fileURLWithPath("/" + std::string(text()));
        case 17:
            return uuid();
        default:
            return std::string(text());
        }
    }

    platform::Value array(std::size_t level) {
        platform::Array array;
        for (std::size_t count = level < deepest ? number(1) % 8 : 0; count > 0 && !rest_.empty(); --count) {
            array.push_back(value(level + 1));
        }
        return array;
    }

    platform::Value dictionary(std::size_t level) {
        platform::Dictionary dictionary;
        for (std::size_t count = level < deepest ? number(1) % 8 : 0; count > 0 && !rest_.empty(); --count) {
            const std::string key = platform::shownText(text());
            dictionary.set(key, value(level + 1));
        }
        return dictionary;
    }

    platform::Value uuid() {
        platform::UUID uuid;
        for (std::byte& byte : uuid.bytes) {
            byte = static_cast<std::byte>(number(1));
        }
        return uuid;
    }

    std::string_view rest_;
};

} // namespace tolvane::fuzz
