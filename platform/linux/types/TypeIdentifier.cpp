#include "platform/linux/types/TypeIdentifier.h"

#include "platform/linux/types/DynamicTypeIdentifier.h"
#include "platform/values/Utf8.h"

#include <algorithm>
#include <array>

namespace tolvane::platform {

namespace {

constexpr std::string_view dataType = "public.data";
constexpr std::string_view executableType = "public.unix-executable";
constexpr std::string_view folderType = "public.folder";
constexpr std::string_view packageType = "com.apple.package";
constexpr std::string_view aliasType = "com.apple.alias-file";
constexpr std::string_view plainTextType = "com.apple.traditional-mac-plain-text";

constexpr std::size_t finderInfoSize = 32;
constexpr std::size_t finderFlagsOffset = 8;
constexpr unsigned packageFlag = 0x2000;
constexpr unsigned aliasFlag = 0x8000;
constexpr std::array plainTextCode{std::byte{'T'}, std::byte{'E'}, std::byte{'X'}, std::byte{'T'}};

bool hasFinderFlag(const ItemFacts& item, unsigned flag) {
    if (item.finderInfo.size() != finderInfoSize) {
        return false;
    }
    const auto high = std::to_integer<unsigned>(item.finderInfo[finderFlagsOffset]);
    const auto low = std::to_integer<unsigned>(item.finderInfo[finderFlagsOffset + 1]);
    return (((high << 8) | low) & flag) != 0;
}

bool hasPlainTextCode(const ItemFacts& item) {
    return item.finderInfo.size() == finderInfoSize
           && std::ranges::equal(item.finderInfo.first(plainTextCode.size()), plainTextCode);
}

std::optional<std::string> dynamicType(std::string_view conformance, std::string_view extension) {
    const DynamicTypeIdentifier type{
        {std::string(conformance)}, std::string(filenameExtensionTagClass), std::string(extension)};
    return type.encode();
}

std::string directoryIdentifier(const ItemFacts& item, const TypeTable& table) {
    if (item.isVolumeRoot) {
        return "public.volume";
    }
    const auto extension = extensionOfName(item.name);
    if (extension.empty()) {
        return std::string(folderType);
    }
    if (const auto type = table.typeForExtension(extension, TypeKind::directory)) {
        return std::string(*type);
    }
    // The bit makes a folder with an undeclared extension a package. Packages have no code, so the identifier
    // contains the full name.
    if (const auto package = table.declaredIdentifier(packageType);
        package && hasFinderFlag(item, packageFlag)) {
        return dynamicType(*package, extension).value_or(std::string(folderType));
    }
    return std::string(folderType);
}

std::string regularFileIdentifier(const ItemFacts& item, const TypeTable& table) {
    if (const auto alias = table.declaredIdentifier(aliasType); alias && hasFinderFlag(item, aliasFlag)) {
        return std::string(*alias);
    }
    const auto withoutType = item.isExecutable ? executableType : dataType;
    const auto extension = extensionOfName(item.name);
    if (extension.empty()) {
        const auto plainText = table.declaredIdentifier(plainTextType);
        return std::string(plainText && hasPlainTextCode(item) ? *plainText : withoutType);
    }
    if (!isValidUtf8(extension)) {
        return std::string(withoutType);
    }
    if (const auto type = table.typeForExtension(extension, TypeKind::data)) {
        return std::string(*type);
    }
    // An extension that no dynamic identifier can hold is still an extension: the execute bit does not count.
    return dynamicType(dataType, extension).value_or(std::string(dataType));
}

} // namespace

std::string_view extensionOfName(std::string_view name) {
    const auto dot = name.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

std::string typeIdentifier(const ItemFacts& item, const TypeTable& table) {
    switch (item.kind) {
    case ItemKind::symbolicLink:
        return "public.symlink";
    case ItemKind::fifo:
        return "public.named-pipe";
    case ItemKind::socket:
        return "public.socket";
    case ItemKind::characterDevice:
        return "public.character-special";
    case ItemKind::blockDevice:
        return "public.block-special";
    case ItemKind::folder:
        return directoryIdentifier(item, table);
    case ItemKind::regularFile:
        return regularFileIdentifier(item, table);
    case ItemKind::unknown:
        break;
    }
    return std::string(dataType);
}

} // namespace tolvane::platform
