#include "platform/linux/types/DynamicTypeIdentifier.h"

#include "platform/linux/types/LowerCase.h"
#include "platform/values/Utf8.h"

#include <array>
#include <cstdint>

namespace tolvane::platform {

namespace {

constexpr std::string_view prefix = "dyn.a";
constexpr std::string_view conformanceStart = "?0=";
constexpr std::string_view alphabet = "abcdefghkmnpqrstuvwxyz0123456789";
constexpr std::string_view separators = ",:=\\";
constexpr std::string_view codeDigits = "0123456789ABCDEF";
constexpr unsigned bitsOfCharacter = 5;
constexpr unsigned bitsOfByte = 8;

enum class Role { tagClass, type };

struct WellKnownName {
    std::string_view code;
    Role role;
    std::string_view name;
};

// Code 0 is not here: it is the key of the conformances and stands nowhere else.
constexpr std::array wellKnownNames{
    WellKnownName{"1", Role::tagClass, filenameExtensionTagClass},
    WellKnownName{"2", Role::tagClass, fourCharacterCodeTagClass},
    WellKnownName{"3", Role::tagClass, mimeTypeTagClass},
    WellKnownName{"4", Role::tagClass, pasteboardTagClass},
    WellKnownName{"5", Role::tagClass, urlSchemeTagClass},
    WellKnownName{"6", Role::type, "public.data"},
    WellKnownName{"7", Role::type, "public.text"},
    WellKnownName{"8", Role::type, "public.plain-text"},
    WellKnownName{"9", Role::type, "public.utf16-plain-text"},
    WellKnownName{"A", Role::type, "com.apple.traditional-mac-plain-text"},
    WellKnownName{"B", Role::type, "public.image"},
    WellKnownName{"C", Role::type, "public.video"},
    WellKnownName{"D", Role::type, "public.audio"},
    WellKnownName{"E", Role::type, "public.directory"},
    WellKnownName{"F", Role::type, "public.folder"},
};

bool holdsSeparator(std::string_view text) {
    return text.find_first_of(separators) != std::string_view::npos;
}

// Whether a type or tag class can be written like this. The question mark belongs to the conformance key.
bool canBeWritten(std::string_view name) {
    return !name.empty() && !holdsSeparator(name) && name.find('?') == std::string_view::npos;
}

std::string nameFromWritten(std::string_view written, Role role) {
    for (const auto& known : wellKnownNames) {
        if (known.role == role && known.code == written) {
            return std::string(known.name);
        }
    }
    return std::string(written);
}

std::optional<std::string_view> writtenFromName(std::string_view name, Role role) {
    for (const auto& known : wellKnownNames) {
        if (known.role == role && (known.code == name || equalIgnoringAsciiCase(known.name, name))) {
            return known.code;
        }
    }
    // A name that is nothing but digits would be read back as a code without a known meaning.
    const bool looksLikeCode = name.find_first_not_of(codeDigits) == std::string_view::npos;
    return canBeWritten(name) && !looksLikeCode ? std::optional(name) : std::nullopt;
}

} // namespace

std::optional<std::string> encodeDynamicText(std::string_view text) {
    if (!isValidUtf8(text)) {
        return std::nullopt;
    }
    std::string identifier(prefix);
    identifier.reserve(prefix.size() + (text.size() * bitsOfByte) / bitsOfCharacter + 1);
    std::uint32_t bits = 0;
    unsigned bitCount = 0;
    for (const char byte : text) {
        bits = (bits << bitsOfByte) | static_cast<unsigned char>(byte);
        for (bitCount += bitsOfByte; bitCount >= bitsOfCharacter; bitCount -= bitsOfCharacter) {
            identifier += alphabet[(bits >> (bitCount - bitsOfCharacter)) & 0x1F];
        }
    }
    if (bitCount > 0) {
        identifier += alphabet[(bits << (bitsOfCharacter - bitCount)) & 0x1F];
    }
    return identifier;
}

std::optional<std::string> decodeDynamicText(std::string_view identifier) {
    if (!equalIgnoringAsciiCase(identifier.substr(0, prefix.size()), prefix)) {
        return std::nullopt;
    }
    std::string text;
    std::uint32_t bits = 0;
    unsigned bitCount = 0;
    for (const char character : identifier.substr(prefix.size())) {
        const auto value = alphabet.find(asciiLowerCase(character));
        if (value == std::string_view::npos) {
            return std::nullopt;
        }
        bits = (bits << bitsOfCharacter) | static_cast<std::uint32_t>(value);
        bitCount += bitsOfCharacter;
        if (bitCount >= bitsOfByte) {
            bitCount -= bitsOfByte;
            text += static_cast<char>(static_cast<unsigned char>(bits >> bitCount));
        }
    }
    const auto leftOver = bits & ((1U << bitCount) - 1);
    if (bitCount >= bitsOfCharacter || leftOver != 0 || !isValidUtf8(text)) {
        return std::nullopt;
    }
    return text;
}

std::optional<DynamicTypeIdentifier> DynamicTypeIdentifier::decode(std::string_view identifier) {
    const auto text = decodeDynamicText(identifier);
    if (!text) {
        return std::nullopt;
    }
    DynamicTypeIdentifier type;
    std::string_view rest = *text;
    if (rest.starts_with(conformanceStart)) {
        const auto end = rest.find(':');
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        auto list = rest.substr(conformanceStart.size(), end - conformanceStart.size());
        rest.remove_prefix(end + 1);
        for (bool isLast = false; !isLast;) {
            const auto comma = list.find(',');
            const auto written = list.substr(0, comma);
            if (!canBeWritten(written)) {
                return std::nullopt;
            }
            type.conformances.push_back(nameFromWritten(written, Role::type));
            isLast = comma == std::string_view::npos;
            list.remove_prefix(isLast ? list.size() : comma + 1);
        }
    }
    const auto equals = rest.find('=');
    if (equals == std::string_view::npos) {
        return std::nullopt;
    }
    const auto tagClass = rest.substr(0, equals);
    const auto tag = rest.substr(equals + 1);
    if (!canBeWritten(tagClass) || holdsSeparator(tag)) {
        return std::nullopt;
    }
    type.tagClass = nameFromWritten(tagClass, Role::tagClass);
    type.tag = tag;
    return type;
}

std::optional<std::string> DynamicTypeIdentifier::encode() const {
    std::string text;
    for (const auto& conformance : conformances) {
        const auto written = writtenFromName(conformance, Role::type);
        if (!written) {
            return std::nullopt;
        }
        text += text.empty() ? conformanceStart : ",";
        text += *written;
    }
    if (!text.empty()) {
        text += ':';
    }
    const auto writtenClass = writtenFromName(tagClass, Role::tagClass);
    if (!writtenClass) {
        return std::nullopt;
    }
    const bool isExtension = *writtenClass == "1";
    const auto writtenTag = isExtension ? lowerCase(tag) : std::optional(tag);
    if (!writtenTag || holdsSeparator(*writtenTag)) {
        return std::nullopt;
    }
    text += *writtenClass;
    text += '=';
    text += *writtenTag;
    return encodeDynamicText(text);
}

} // namespace tolvane::platform
