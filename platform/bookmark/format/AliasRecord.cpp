#include "platform/bookmark/format/AliasRecord.h"

#include "platform/values/ByteCursor.h"
#include "platform/values/MacRoman.h"
#include "platform/values/Utf16Text.h"

#include <algorithm>

namespace tolvane::platform {

namespace {

constexpr std::size_t headLength = 10;
constexpr std::size_t secondVersionLength = 150;
constexpr std::size_t thirdVersionLength = 58;
constexpr std::uint32_t noNumber = 0xFFFF'FFFF;

/// From 1 January 1904 to 1 January 1970.
constexpr std::int64_t secondsTo1970 = 2'082'844'800;

std::optional<Date> dateOfSeconds(std::uint32_t seconds) {
    return seconds == 0 ? std::nullopt
                        : std::optional(Date::fromUnixTime(std::int64_t{seconds} - secondsTo1970, 0));
}

/// A date of eight bytes: 48 bits of seconds and 16 bits of fraction.
std::optional<Date> longDate(ByteCursor& cursor) {
    constexpr std::uint64_t nanosecondsInSecond = 1'000'000'000;
    const std::uint64_t bits = cursor.bigEndian(8);
    if (bits == 0) {
        return std::nullopt;
    }
    const auto seconds = static_cast<std::int64_t>(bits >> 16U) - secondsTo1970;
    const std::uint64_t nanoseconds = ((bits & 0xFFFFU) * nanosecondsInSecond) >> 16U;
    return Date::fromUnixTime(seconds, static_cast<std::uint32_t>(nanoseconds));
}

std::optional<std::uint32_t> number(ByteCursor& cursor) {
    const std::uint32_t value = cursor.u32be();
    return value == noNumber ? std::nullopt : std::optional(value);
}

/// A text of one length byte and room for the rest.
std::optional<std::string> shortText(ByteCursor& cursor, std::size_t room) {
    ByteCursor text(cursor.take(room));
    const auto letters = text.take(text.u8());
    return text.failed() ? std::nullopt : std::optional(textOfMacRoman(letters));
}

/// UTF-16 after its number of units.
std::optional<std::string> unicodeText(std::span<const std::byte> bytes) {
    ByteCursor cursor(bytes);
    const auto units = cursor.take(std::size_t{2} * cursor.u16be());
    return cursor.failed() ? std::nullopt : std::optional(textOfBigEndianUtf16(units));
}

std::string bytesAsText(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

class AliasReader {
public:
    AliasReader(std::span<const std::byte> bytes, unsigned level) : bytes_(bytes), level_(level) {}

    std::expected<AliasRecord, BookmarkFault> read() {
        readHead();
        if (!fault_) {
            record_.version == 2 ? readSecondVersion() : readThirdVersion();
        }
        if (!fault_) {
            readItems();
        }
        if (fault_) {
            return std::unexpected(*fault_);
        }
        return std::move(record_);
    }

private:
    void readHead() {
        ByteCursor cursor(bytes_);
        record_.applicationInfo = cursor.u32be();
        record_.length = cursor.u16be();
        record_.version = cursor.u16be();
        const std::uint16_t kind = cursor.u16be();
        const bool isKnown = record_.version == 2 || record_.version == 3;
        if (cursor.failed()) {
            fail(bytes_.size(), "an alias record of 10 bytes or more");
        } else if (!isKnown) {
            fail(6, "version 2 or 3 of an alias record");
        } else if (kind > 1) {
            fail(8, "the kind of a file or folder");
        } else if (
            record_.length > bytes_.size()
            || record_.length < (record_.version == 2 ? secondVersionLength : thirdVersionLength)) {
            fail(4, "the length of an alias record");
        } else {
            record_.isFolder = kind == 1;
            bytes_ = bytes_.first(record_.length);
        }
    }

    void readSecondVersion() {
        constexpr std::size_t volumeNameRoom = 28;
        constexpr std::size_t fileNameRoom = 64;
        ByteCursor cursor(bytes_);
        cursor.seek(headLength);
        const auto volumeName = shortText(cursor, volumeNameRoom);
        record_.volumeCreationDate.local = dateOfSeconds(cursor.u32be());
        record_.fileSystem = cursor.u16be();
        record_.diskType = cursor.u16be();
        record_.parentNumber = number(cursor);
        const auto fileName = shortText(cursor, fileNameRoom);
        record_.fileNumber = number(cursor);
        record_.creationDate.local = dateOfSeconds(cursor.u32be());
        cursor.take(12); // Type, creator and levels.
        record_.volumeFlags = cursor.u32be();
        if (!volumeName || !fileName) {
            fail(volumeName ? headLength + volumeNameRoom + 12 : headLength, "a name with room for it");
            return;
        }
        record_.volumeName = *volumeName;
        record_.fileName = *fileName;
        itemsStart_ = secondVersionLength;
    }

    void readThirdVersion() {
        ByteCursor cursor(bytes_);
        cursor.seek(headLength);
        record_.volumeCreationDate.utc = longDate(cursor);
        record_.fileSystem = cursor.u16be();
        cursor.take(2);
        record_.diskType = cursor.u16be();
        record_.parentNumber = number(cursor);
        record_.fileNumber = number(cursor);
        record_.creationDate.utc = longDate(cursor);
        record_.volumeFlags = cursor.u32be();
        itemsStart_ = thirdVersionLength;
    }

    void readItems() {
        ByteCursor cursor(bytes_);
        cursor.seek(itemsStart_);
        while (cursor.remaining() > 0) {
            AliasItem item;
            item.offset = cursor.position();
            item.tag = cursor.u16be();
            const std::size_t length = cursor.u16be();
            if (item.tag == alias_tag::end && !cursor.failed()) {
                return;
            }
            const auto bytes = cursor.take(length);
            if (cursor.failed()) {
                fail(item.offset, "a tag with its data within the record");
                return;
            }
            cursor.take(std::min(length % 2, cursor.remaining()));
            item.bytes.assign(bytes.begin(), bytes.end());
            takeItem(item);
            record_.items.push_back(std::move(item));
        }
        warn(bytes_.size(), "The record has no end tag.");
    }

    void takeItem(const AliasItem& item) {
        const std::span<const std::byte> bytes(item.bytes);
        ByteCursor cursor(bytes);
        switch (item.tag) {
        case alias_tag::folderName:
            record_.folderName = textOfMacRoman(bytes);
            break;
        case alias_tag::parentNumbers:
            while (cursor.remaining() >= 4) {
                record_.parentNumbers.push_back(cursor.u32be());
            }
            break;
        case alias_tag::carbonPath:
            record_.carbonPath = textOfMacRoman(bytes);
            break;
        case alias_tag::unicodeFileName:
            takeText(record_.fileName, item);
            break;
        case alias_tag::unicodeVolumeName:
            takeText(record_.volumeName, item);
            break;
        case alias_tag::volumeCreationDate:
            takeDate(record_.volumeCreationDate.utc, item);
            break;
        case alias_tag::fileCreationDate:
            takeDate(record_.creationDate.utc, item);
            break;
        case alias_tag::posixPath:
            record_.posixPath = bytesAsText(bytes);
            break;
        case alias_tag::mountPoint:
            record_.mountPoint = bytesAsText(bytes);
            break;
        case alias_tag::diskImageAlias:
            takeDiskImage(item);
            break;
        case alias_tag::homeLevels:
            record_.homeLevels = cursor.u16be();
            if (cursor.failed()) {
                record_.homeLevels.reset();
            }
            break;
        default:
            break;
        }
    }

    void takeText(std::string& text, const AliasItem& item) {
        if (auto unicode = unicodeText(item.bytes)) {
            text = *std::move(unicode);
        } else {
            warn(item.offset, "A name is shorter than it states.");
        }
    }

    void takeDate(std::optional<Date>& date, const AliasItem& item) {
        ByteCursor cursor(item.bytes);
        const std::optional<Date> read = longDate(cursor);
        if (cursor.failed()) {
            warn(item.offset, "A date does not have 8 bytes.");
        } else {
            date = read;
        }
    }

    void takeDiskImage(const AliasItem& item) {
        if (level_ == deepestDiskImageAlias) {
            warn(item.offset, "The alias of a disk image lies too deep to be read.");
            return;
        }
        auto image = AliasReader(item.bytes, level_ + 1).read();
        if (image) {
            record_.diskImage.assign(1, *std::move(image));
        } else {
            warn(item.offset, "The alias of the disk image cannot be read.");
        }
    }

    void warn(std::size_t offset, std::string_view text) { record_.warnings.push_back({offset, text}); }

    void fail(std::size_t offset, std::string_view expected) {
        if (!fault_) {
            fault_ = BookmarkFault{offset, expected};
        }
    }

    std::span<const std::byte> bytes_;
    unsigned level_;
    std::size_t itemsStart_ = 0;
    AliasRecord record_;
    std::optional<BookmarkFault> fault_;
};

} // namespace

std::optional<std::string> AliasRecord::path() const {
    if (!mountPoint || !posixPath) {
        return std::nullopt;
    }
    std::string_view volume = *mountPoint;
    std::string_view below = *posixPath;
    volume = volume.substr(0, volume.find_last_not_of('/') + 1);
    below.remove_prefix(std::min(below.find_first_not_of('/'), below.size()));
    return std::string(volume) + "/" + std::string(below);
}

std::expected<AliasRecord, BookmarkFault> readAliasRecord(std::span<const std::byte> bytes) {
    return AliasReader(bytes, 0).read();
}

std::optional<Value> aliasItemValue(const AliasItem& item) {
    const std::span<const std::byte> bytes(item.bytes);
    ByteCursor cursor(bytes);
    switch (item.tag) {
    case alias_tag::folderName:
    case alias_tag::carbonPath:
        return Value(textOfMacRoman(bytes));
    case alias_tag::posixPath:
    case alias_tag::mountPoint:
        return Value(bytesAsText(bytes));
    case alias_tag::unicodeFileName:
    case alias_tag::unicodeVolumeName: {
        auto text = unicodeText(bytes);
        return text ? std::optional(Value(*std::move(text))) : std::nullopt;
    }
    case alias_tag::volumeCreationDate:
    case alias_tag::fileCreationDate: {
        const auto date = longDate(cursor);
        return date ? std::optional(Value(*date)) : std::nullopt;
    }
    case alias_tag::parentNumbers: {
        Array numbers;
        while (cursor.remaining() >= 4) {
            numbers.emplace_back(std::int64_t{cursor.u32be()});
        }
        return Value(std::move(numbers));
    }
    case alias_tag::homeLevels: {
        const std::int64_t levels = cursor.u16be();
        return cursor.failed() ? std::nullopt : std::optional(Value(levels));
    }
    default:
        return std::nullopt;
    }
}

std::string_view aliasTagName(std::uint16_t tag) {
    switch (tag) {
    case alias_tag::folderName:
        return "folderName";
    case alias_tag::parentNumbers:
        return "parentNumbers";
    case alias_tag::carbonPath:
        return "carbonPath";
    case alias_tag::networkMount:
        return "networkMount";
    case alias_tag::unicodeFileName:
        return "unicodeFileName";
    case alias_tag::unicodeVolumeName:
        return "unicodeVolumeName";
    case alias_tag::volumeCreationDate:
        return "volumeCreationDate";
    case alias_tag::fileCreationDate:
        return "fileCreationDate";
    case alias_tag::posixPath:
        return "posixPath";
    case alias_tag::mountPoint:
        return "mountPoint";
    case alias_tag::diskImageAlias:
        return "diskImageAlias";
    case alias_tag::homeLevels:
        return "homeLevels";
    default:
        return {};
    }
}

std::optional<std::size_t> statedAliasLength(std::span<const std::byte> front) {
    ByteCursor cursor(front);
    cursor.take(4);
    const std::size_t length = cursor.u16be();
    const std::uint16_t version = cursor.u16be();
    const std::uint16_t kind = cursor.u16be();
    const bool isLike = !cursor.failed() && kind <= 1
                        && ((version == 2 && length >= secondVersionLength)
                            || (version == 3 && length >= thirdVersionLength));
    return isLike ? std::optional(length) : std::nullopt;
}

bool beginsLikeAliasRecord(std::span<const std::byte> bytes) {
    const auto length = statedAliasLength(bytes);
    return length && *length <= bytes.size();
}

bool isLikeAliasRecord(std::span<const std::byte> bytes) {
    return statedAliasLength(bytes) == bytes.size();
}

} // namespace tolvane::platform
