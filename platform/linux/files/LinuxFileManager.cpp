#include "platform/linux/files/LinuxFileManager.h"

#include "platform/linux/files/ItemStatus.h"
#include "platform/values/Pieces.h"
#include "platform/values/Utf8.h"

#include <cerrno>
#include <linux/limits.h>

namespace tolvane::platform {

namespace {

constexpr std::string_view replacementCharacter = "\uFFFD";

std::string_view fileTypeText(std::uint32_t mode) {
    switch (kindOfMode(mode)) {
    case ItemKind::regularFile:
        return NSFileTypeRegular;
    case ItemKind::folder:
        return NSFileTypeDirectory;
    case ItemKind::symbolicLink:
        return NSFileTypeSymbolicLink;
    case ItemKind::socket:
        return NSFileTypeSocket;
    case ItemKind::characterDevice:
        return NSFileTypeCharacterSpecial;
    case ItemKind::blockDevice:
        return NSFileTypeBlockSpecial;
    case ItemKind::fifo:
    case ItemKind::unknown:
        break;
    }
    return NSFileTypeUnknown;
}

// Offers a buffer for nearly every answer first, then for the largest that Linux allows. Asking for the size
// would be one more call, and would miss what grows in between.
template <typename Bytes, typename Call>
std::expected<Bytes, int> readWhole(std::size_t most, const Call& call) {
    using Unit = typename Bytes::value_type;
    std::array<Unit, 1024> usual{};
    if (const auto length = call(std::span(usual)); length && std::cmp_less_equal(*length, usual.size())) {
        return Bytes(usual.begin(), usual.begin() + *length);
    } else if (!length && length.error() != ERANGE) {
        return std::unexpected(length.error());
    }
    Bytes bytes(most, Unit{});
    const auto length = call(std::span(bytes));
    if (!length || std::cmp_greater(*length, bytes.size())) {
        return std::unexpected(length ? ERANGE : length.error());
    }
    bytes.resize(static_cast<std::size_t>(*length));
    return bytes;
}

std::optional<Dictionary> extendedAttributes(const ExtendedAttributeCalls& calls, const std::string& path) {
    const auto list = readWhole<std::string>(
        XATTR_LIST_MAX, [&](std::span<char> buffer) { return calls.listxattr(path.c_str(), buffer); });
    if (!list || list->empty()) {
        return std::nullopt;
    }
    Dictionary attributes;
    std::vector<std::pair<std::string, Data>> undecodable;
    for (const std::string_view piece : nonEmptyPieces(*list, '\0')) {
        const std::string name(piece);
        auto value = readWhole<Data>(XATTR_SIZE_MAX, [&](std::span<std::byte> buffer) {
            return calls.getxattr(path.c_str(), name.c_str(), buffer);
        });
        if (!value && value.error() == ENODATA) {
            continue;
        }
        if (!value) {
            return std::nullopt;
        }
        if (isValidUtf8(name)) {
            attributes.set(name, *std::move(value));
        } else {
            undecodable.emplace_back(shownText(name), *std::move(value));
        }
    }
    // These come last, so that a name that can be read is never the one that has to give way.
    for (auto& [text, value] : undecodable) {
        while (attributes.find(text) != nullptr) {
            text += replacementCharacter;
        }
        attributes.set(text, std::move(value));
    }
    return attributes.empty() ? std::nullopt : std::optional(std::move(attributes));
}

} // namespace

LinuxFileManager::LinuxFileManager(
    const ExtendedAttributeCalls& extendedAttributeCalls, AccountNames accountNames)
    : extendedAttributeCalls_(extendedAttributeCalls)
    , accountNames_(std::move(accountNames)) {}

Result<Dictionary> LinuxFileManager::attributesOfItemAtPath(std::string_view path) const {
    const std::string terminatedPath(path);
    const auto status = statusOfItem(terminatedPath);
    if (!status) {
        return std::unexpected(status.error());
    }
    Dictionary attributes;
    attributes.reserve(13); // all that can be set below
    const auto setIfPresent = [&attributes](std::string_view key, auto&& value) {
        if (value) {
            attributes.set(key, *std::forward<decltype(value)>(value));
        }
    };
    // In the dictionary's own order, so that every entry is added at its end.
    setIfPresent(NSFileCreationDate, status->creationDate);
    setIfPresent(NSFileExtendedAttributes, extendedAttributes(extendedAttributeCalls_, terminatedPath));
    attributes.set(NSFileGroupOwnerAccountID, status->groupID);
    setIfPresent(NSFileGroupOwnerAccountName, accountNames_.groupName(status->groupID));
    attributes.set(NSFileModificationDate, status->modificationDate);
    attributes.set(NSFileOwnerAccountID, status->ownerID);
    setIfPresent(NSFileOwnerAccountName, accountNames_.userName(status->ownerID));
    attributes.set(NSFilePosixPermissions, static_cast<std::uint16_t>(status->mode & 07777U));
    attributes.set(NSFileReferenceCount, status->linkCount);
    attributes.set(NSFileSize, status->size);
    attributes.set(NSFileSystemFileNumber, status->fileNumber);
    attributes.set(NSFileSystemNumber, status->device);
    attributes.set(NSFileType, fileTypeText(status->mode));
    return attributes;
}

} // namespace tolvane::platform
