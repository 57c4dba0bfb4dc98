#include "platform/linux/volumes/VolumeUUID.h"

#include "platform/posix/FileDescriptor.h"
#include "platform/values/HexDigits.h"
#include "platform/values/Value.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <linux/btrfs.h>
#include <linux/stat.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

namespace tolvane::platform {

namespace {

constexpr std::size_t uuidLength = 16;
using UUIDBytes = std::array<std::byte, uuidLength>;

// The kernel's structures, defined here because the headers of older systems lack them.
struct AnyFileSystemUUID {
    std::uint8_t length;
    UUIDBytes bytes;
};
struct Ext4UUID {
    std::uint32_t length;
    std::uint32_t flags;
    UUIDBytes bytes;
};
struct XfsGeometry {
    std::array<std::uint32_t, 8> sizes;
    std::array<std::uint64_t, 4> counts;
    UUIDBytes uuid;
    std::array<std::uint32_t, 7> more;
};
static_assert(sizeof(AnyFileSystemUUID) == 17 && sizeof(Ext4UUID) == 24 && sizeof(XfsGeometry) == 112);

// ext4's request counts its structure without the bytes that follow the two words.
constexpr unsigned long anyFileSystemRequest = _IOR(0x15, 0, AnyFileSystemUUID);
constexpr unsigned long ext4Request = _IOC(_IOC_READ, 'f', 44, 8);
constexpr unsigned long xfsRequest = _IOR('X', 100, XfsGeometry);

std::optional<UUIDBytes> anyFileSystemUUID(int descriptor) {
    AnyFileSystemUUID answer{};
    const bool isAnswered =
        ioctl(descriptor, anyFileSystemRequest, &answer) == 0 && answer.length == uuidLength;
    return isAnswered ? std::optional(answer.bytes) : std::nullopt;
}

std::optional<UUIDBytes> ext4UUID(int descriptor) {
    Ext4UUID answer{uuidLength, 0, {}};
    const bool isAnswered = ioctl(descriptor, ext4Request, &answer) == 0 && answer.length == uuidLength;
    return isAnswered ? std::optional(answer.bytes) : std::nullopt;
}

std::optional<UUIDBytes> btrfsUUID(int descriptor) {
    btrfs_ioctl_fs_info_args answer{};
    if (ioctl(descriptor, BTRFS_IOC_FS_INFO, &answer) != 0) {
        return std::nullopt;
    }
    UUIDBytes bytes{};
    std::ranges::transform(answer.fsid, bytes.begin(), [](std::uint8_t byte) { return std::byte{byte}; });
    return bytes;
}

std::optional<UUIDBytes> xfsUUID(int descriptor) {
    XfsGeometry answer{};
    return ioctl(descriptor, xfsRequest, &answer) == 0 ? std::optional(answer.uuid) : std::nullopt;
}

// The file system's own request. Its number may mean something else to others, so only its own type gets it.
std::optional<UUIDBytes> ownUUID(int descriptor, std::string_view type) {
    if (type == "ext4" || type == "ext3" || type == "ext2") {
        return ext4UUID(descriptor);
    }
    if (type == "btrfs") {
        return btrfsUUID(descriptor);
    }
    if (type == "xfs") {
        return xfsUUID(descriptor);
    }
    return std::nullopt;
}

// Something else may be mounted there by the time it is opened.
bool isOn(int descriptor, const Mount& mount) {
    struct statx status{};
    return statx(descriptor, "", AT_EMPTY_PATH, STATX_MNT_ID, &status) == 0
           && ((status.stx_mask & STATX_MNT_ID) == 0 || status.stx_mnt_id == mount.id);
}

std::optional<std::string> textOf(const std::optional<UUIDBytes>& bytes) {
    return bytes ? uuidText(*bytes) : std::nullopt;
}

} // namespace

std::optional<std::string> uuidOfMountedVolume(const Mount& mount) {
    // Opening a folder without reading it does not change its access date.
    const auto root = openFile(mount.mountPoint, O_RDONLY | O_DIRECTORY | O_NONBLOCK);
    if (!root || !isOn(root->number(), mount)) {
        return std::nullopt;
    }
    if (auto text = textOf(anyFileSystemUUID(root->number()))) {
        return text;
    }
    return textOf(ownUUID(root->number(), mount.type));
}

std::optional<std::string> uuidText(std::span<const std::byte, uuidLength> bytes) {
    if (std::ranges::all_of(bytes, [](std::byte byte) { return byte == std::byte{0}; })) {
        return std::nullopt;
    }
    UUID uuid;
    std::ranges::copy(bytes, uuid.bytes.begin());
    return uuid.text();
}

std::optional<std::string> uuidInText(std::string_view text) {
    static constexpr std::string_view form = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    if (text.size() != form.size()) {
        return std::nullopt;
    }
    UUIDBytes bytes{};
    std::size_t digits = 0;
    for (std::size_t i = 0; i < form.size(); ++i) {
        const int digit = valueOfHexDigit(text[i]);
        if (form[i] == '-' ? text[i] != '-' : digit < 0) {
            return std::nullopt;
        }
        if (form[i] != '-') {
            std::byte& byte = bytes.at(digits++ / 2);
            byte = (byte << 4U) | static_cast<std::byte>(digit);
        }
    }
    return uuidText(bytes);
}

} // namespace tolvane::platform
