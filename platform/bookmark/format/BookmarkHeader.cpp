#include "platform/bookmark/format/BookmarkHeader.h"

#include "platform/values/ByteCursor.h"

#include <limits>

namespace tolvane::platform {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view bareMagic = "book";
constexpr std::string_view bareAliasMagic = "alis";
constexpr std::string_view aliasFileMagic = "book\0\0\0\0mark\0\0\0\0"sv;

/// A section starts with the offset of its first table.
constexpr std::size_t leastSectionLength = 4;

bool startsWith(std::span<const std::byte> bytes, std::string_view letters) {
    const auto expected = std::as_bytes(std::span(letters));
    return bytes.size() >= expected.size() && std::ranges::equal(bytes.first(expected.size()), expected);
}

std::unexpected<BookmarkFault> fault(std::size_t offset, std::string_view expected) {
    return std::unexpected(BookmarkFault{offset, expected});
}

template <std::size_t Count>
std::array<std::byte, Count> takeArray(ByteCursor& cursor) {
    std::array<std::byte, Count> bytes{};
    std::ranges::copy(cursor.take(Count), bytes.begin());
    return bytes;
}

void takeExtra(ByteCursor& cursor, BookmarkHeader& header, std::uint32_t usualSize) {
    const std::span<const std::byte> extra = cursor.take(header.size - usualSize);
    header.extra.assign(extra.begin(), extra.end());
}

void noteBareVersion(ReadHeader& read) {
    if (read.header.version == bookmarkVersionWithTeam) {
        if (read.header.size != bareHeaderSizeWithTeam) {
            read.warnings.push_back({12, "the header of a bookmark of version 0x10050000 has not 64 bytes"});
        }
    } else if (read.header.version != bookmarkVersion) {
        read.warnings.push_back({8, "the version word is neither 0x10040000 nor 0x10050000"});
    }
}

std::expected<ReadHeader, BookmarkFault> readBare(
    std::span<const std::byte> bytes, BookmarkContainer container) {
    if (bytes.size() < bareHeaderSize) {
        return fault(bytes.size(), "a header of 48 bytes");
    }
    ReadHeader read;
    BookmarkHeader& header = read.header;
    header.container = container;
    ByteCursor cursor(bytes);
    cursor.take(bareMagic.size());
    const std::uint32_t totalSize = cursor.u32le();
    header.version = cursor.u32le();
    header.size = cursor.u32le();
    header.securityScopeKey = takeArray<32>(cursor);
    if (totalSize > bytes.size()) {
        return fault(4, "a total size within the bytes that are there");
    }
    if (header.size < bareHeaderSize || header.size > totalSize) {
        return fault(12, "a header size from 48 to the total size");
    }
    if (totalSize - header.size < leastSectionLength) {
        return fault(4, "a total size with room for the data section");
    }
    takeExtra(cursor, header, bareHeaderSize);
    read.sectionLength = totalSize - header.size;
    noteBareVersion(read);
    return read;
}

std::expected<ReadHeader, BookmarkFault> readAliasFile(std::span<const std::byte> bytes) {
    if (bytes.size() < aliasFileHeaderSize) {
        return fault(bytes.size(), "a header of 56 bytes");
    }
    ReadHeader read;
    BookmarkHeader& header = read.header;
    header.container = BookmarkContainer::aliasFile;
    ByteCursor cursor(bytes);
    cursor.take(aliasFileMagic.size());
    header.size = cursor.u32le();
    header.repeatedSize = cursor.u32le();
    const std::uint32_t sectionLength = cursor.u32le();
    header.version = cursor.u32le();
    header.beforeTime = takeArray<8>(cursor);
    header.timeBits = cursor.u64le();
    header.afterTime = takeArray<8>(cursor);
    if (header.size < aliasFileHeaderSize || header.size > bytes.size()) {
        return fault(16, "a header size from 56 to the size of the file");
    }
    if (sectionLength > bytes.size() - header.size) {
        return fault(24, "a length of the data section within the bytes that are there");
    }
    // The other container counts its header too.
    constexpr auto most = std::numeric_limits<std::uint32_t>::max() - aliasFileHeaderSize;
    if (sectionLength < leastSectionLength || sectionLength > most) {
        return fault(24, "a length of the data section from 4 bytes to 4 GiB less the header");
    }
    takeExtra(cursor, header, aliasFileHeaderSize);
    read.sectionLength = sectionLength;
    if (header.repeatedSize != header.size) {
        read.warnings.push_back({20, "the header size is not repeated"});
    }
    if (header.version != bookmarkVersion) {
        read.warnings.push_back({28, "the version word is not 0x10040000"});
    }
    return read;
}

} // namespace

std::expected<ReadHeader, BookmarkFault> readBookmarkHeader(std::span<const std::byte> bytes) {
    if (startsWith(bytes, aliasFileMagic)) {
        return readAliasFile(bytes);
    }
    if (startsWith(bytes, bareMagic)) {
        return readBare(bytes, BookmarkContainer::bare);
    }
    if (startsWith(bytes, bareAliasMagic)) {
        return readBare(bytes, BookmarkContainer::bareAlias);
    }
    return fault(0, R"(the letters "book" or "alis")");
}

std::optional<std::uint64_t> claimedBookmarkLength(std::span<const std::byte> front) {
    ByteCursor cursor(front);
    std::uint64_t length = 0;
    if (startsWith(front, aliasFileMagic)) {
        cursor.seek(aliasFileMagic.size());
        length = cursor.u32le();
        cursor.take(4);
        length += cursor.u32le();
    } else if (startsWith(front, bareMagic) || startsWith(front, bareAliasMagic)) {
        cursor.seek(bareMagic.size());
        length = cursor.u32le();
    } else {
        return std::nullopt;
    }
    return cursor.failed() ? std::nullopt : std::optional(length);
}

BookmarkHeader aliasFileHeader(const Date& written) {
    BookmarkHeader header;
    header.container = BookmarkContainer::aliasFile;
    header.size = aliasFileHeaderSize;
    header.timeBits = std::bit_cast<std::uint64_t>(written.timeIntervalSinceReferenceDate());
    return header;
}

void appendBookmarkHeader(Data& bytes, const BookmarkHeader& header, std::size_t sectionLength) {
    if (header.isAliasFile()) {
        appendText(bytes, aliasFileMagic);
        appendU32le(bytes, header.size);
        appendU32le(bytes, header.repeatedSize);
        appendU32le(bytes, static_cast<std::uint32_t>(sectionLength));
        appendU32le(bytes, header.version);
        appendBytes(bytes, header.beforeTime);
        appendU64le(bytes, header.timeBits);
        appendBytes(bytes, header.afterTime);
    } else {
        appendText(bytes, header.container == BookmarkContainer::bareAlias ? bareAliasMagic : bareMagic);
        appendU32le(bytes, static_cast<std::uint32_t>(header.size + sectionLength));
        appendU32le(bytes, header.version);
        appendU32le(bytes, header.size);
        appendBytes(bytes, header.securityScopeKey);
    }
    appendBytes(bytes, header.extra);
}

} // namespace tolvane::platform
