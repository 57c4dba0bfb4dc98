// Determines the type of items of any kind and name, and decodes and makes dynamic identifiers.
#include "fuzz/Fuzz.h"
#include "platform/linux/types/DeclaredTypesText.h"
#include "platform/linux/types/DynamicTypeIdentifier.h"
#include "platform/linux/types/LowerCase.h"
#include "platform/linux/types/TypeIdentifier.h"
#include "platform/values/Utf8.h"

#include <algorithm>
#include <optional>
#include <string>

namespace {

using namespace tolvane;
using platform::DynamicTypeIdentifier;

bool isPlain(std::string_view identifier) {
    return std::ranges::all_of(identifier, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.'
               || c == '-' || c == '_';
    });
}

void checkItem(const platform::ItemFacts& item, const platform::TypeTable& table) {
    const std::string identifier = platform::typeIdentifier(item, table);
    fuzz::require(!identifier.empty() && isPlain(identifier), "an identifier has plain letters alone");
    fuzz::require(platform::typeIdentifier(item, table) == identifier, "the same facts, the same type");
    const bool isDynamic = identifier.starts_with("dyn.");
    fuzz::require(isDynamic || identifier.contains('.'), "an identifier has its domain");
    if (isDynamic) {
        const auto made = DynamicTypeIdentifier::decode(identifier);
        fuzz::require(made.has_value(), "what is made can be read");
        fuzz::require(
            made->tag == platform::lowerCase(platform::extensionOfName(item.name)),
            "a made type contains its extension");
        fuzz::require(made->encode() == identifier, "and is made of it again");
    }
}

void checkExtension(std::string_view name) {
    const std::string_view extension = platform::extensionOfName(name);
    fuzz::require(!extension.contains('.') && name.ends_with(extension), "an extension ends its name");
    fuzz::require(extension.size() < std::max<std::size_t>(name.size(), 1), "and is not all of it");
}

void checkText(std::string_view text) {
    const auto identifier = platform::encodeDynamicText(text);
    fuzz::require(identifier.has_value() == platform::isValidUtf8(text), "all text and no other is written");
    if (identifier) {
        fuzz::require(isPlain(*identifier), "what is written has plain letters alone");
        fuzz::require(platform::decodeDynamicText(*identifier) == text, "a text comes back");
    }
}

void checkIdentifier(const std::string& identifier) {
    if (const auto text = platform::decodeDynamicText(identifier)) {
        const auto written = platform::encodeDynamicText(*text);
        fuzz::require(
            written && platform::equalIgnoringAsciiCase(*written, identifier), "one identifier, one text");
    }
    if (const auto type = DynamicTypeIdentifier::decode(identifier)) {
        const auto written = type->encode();
        const auto again = written ? DynamicTypeIdentifier::decode(*written) : std::nullopt;
        fuzz::require(!written || again, "what is made can be read");
        fuzz::require(!again || again->encode() == written, "what is made is made once");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto declared = platform::TypeTable::parse(platform::declaredTypesText);
    fuzz::require(declared.has_value(), "the program's own table can be read");
    static const auto nothing = platform::TypeTable::withoutDeclarations();

    const auto bytes = fuzz::bytesOf(data, size);
    const std::string_view text = fuzz::textOf(data, size);
    checkText(text);
    checkIdentifier("dyn.a" + std::string(text));
    checkIdentifier(std::string(text));
    if (const auto written = platform::encodeDynamicText(text)) {
        checkIdentifier(*written);
    }
    if (size < 2) {
        return 0;
    }
    constexpr unsigned kinds = 7;
    constexpr std::size_t finderInfoSize = 32;
    const bool hasFinderInfo = (data[1] & 4U) != 0 && size >= 2 + finderInfoSize;
    const std::size_t nameStart = hasFinderInfo ? 2 + finderInfoSize : 2;
    const platform::ItemFacts item{
        .kind = static_cast<platform::ItemKind>(data[0] % kinds),
        .isVolumeRoot = (data[1] & 1U) != 0,
        .isExecutable = (data[1] & 2U) != 0,
        .name = text.substr(nameStart),
        .finderInfo = hasFinderInfo ? bytes.subspan(2, finderInfoSize) : std::span<const std::byte>()};
    checkExtension(item.name);
    checkItem(item, *declared);
    checkItem(item, nothing);
    return 0;
}
