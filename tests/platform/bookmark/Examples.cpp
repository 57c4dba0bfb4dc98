#include "tests/platform/bookmark/Examples.h"

#include "platform/values/ByteCursor.h"

#include <gtest/gtest.h>

#include <bit>
#include <fstream>
#include <iterator>

namespace tolvane::tests {

using namespace platform;

namespace {

constexpr std::string_view noteBookmarkHex = "626f6f6b 88020000 00000410 30000000"
                                             "00000000 00000000 00000000 00000000"
                                             "00000000 00000000 00000000 00000000"
                                             "84010000 04000000 03030000 00000020"
                                             "05000000 01010000 55736572 73000000"
                                             "04000000 01010000 64656d6f 08000000"
                                             "01010000 6e6f7465 2e747874 0c000000"
                                             "01060000 10000000 20000000 2c000000"
                                             "08000000 04030000 4f530000 00000000"
                                             "08000000 04030000 b94a0600 00000000"
                                             "08000000 04030000 ef4a0600 00000000"
                                             "0c000000 01060000 50000000 60000000"
                                             "70000000 08000000 00040000 41c4dc93"
                                             "80400000 18000000 01020000 01000000"
                                             "00000000 0f000000 00000000 00000000"
                                             "00000000 08000000 04030000 01000000"
                                             "00000000 04000000 03030000 f5010000"
                                             "08000000 01090000 66696c65 3a2f2f2f"
                                             "09000000 01010000 54657374 20446973"
                                             "6b000000 08000000 04030000 0050a11b"
                                             "73000000 08000000 00040000 41c35f1b"
                                             "40000000 24000000 01010000 31313131"
                                             "31313131 2d323232 322d3333 33332d34"
                                             "3434342d 35353535 35353535 35353535"
                                             "18000000 01020000 81000000 01000000"
                                             "ef130000 01000000 00000000 00000000"
                                             "01000000 01010000 2f000000 00000000"
                                             "01050000 cc000000 feffffff 01000000"
                                             "00000000 10000000 04100000 3c000000"
                                             "00000000 05100000 80000000 00000000"
                                             "10100000 a4000000 00000000 40100000"
                                             "94000000 00000000 02200000 70010000"
                                             "00000000 05200000 e0000000 00000000"
                                             "10200000 f0000000 00000000 11200000"
                                             "24010000 00000000 12200000 04010000"
                                             "00000000 13200000 14010000 00000000"
                                             "20200000 50010000 00000000 30200000"
                                             "7c010000 00000000 01c00000 c4000000"
                                             "00000000 11c00000 20000000 00000000"
                                             "12c00000 d4000000 00000000 10d00000"
                                             "04000000 00000000";

constexpr std::string_view noteAliasFileHeaderHex = "626f6f6b 00000000 6d61726b 00000000"
                                                    "38000000 38000000 58020000 00000410"
                                                    "00000000 00000000 000000b2 93dcc441"
                                                    "00000000 00000000";

unsigned digitValue(char digit) {
    return static_cast<unsigned>(digit <= '9' ? digit - '0' : digit - 'a' + 10);
}

} // namespace

Data noteBookmark() {
    return bytesOfHex(noteBookmarkHex);
}

Data noteAliasFile() {
    Data bytes = bytesOfHex(noteAliasFileHeaderHex);
    const Data bare = noteBookmark();
    bytes.insert(bytes.end(), bare.begin() + 48, bare.end());
    return bytes;
}

BookmarkContents noteContents() {
    BookmarkContents contents;
    contents.pathComponents = {"Users", "demo", "note.txt"};
    contents.fileIDs = {21'327, 412'345, 412'399};
    contents.creationDate = Date(700'000'000.5);
    contents.fileFlags = {file_flag::regularFile, plainFileFlagMask, 0};
    contents.componentsBelowHome = 1;
    contents.userName = "demo";
    contents.userID = 501;
    contents.volume.path = "/";
    contents.volume.url = "file:///";
    contents.volume.name = "Test Disk";
    contents.volume.uuid = "11111111-2222-3333-4444-555555555555";
    contents.volume.capacity = 494'384'795'648;
    contents.volume.creationDate = Date(650'000'000.0);
    contents.volume.flags = {
        volume_flag::local | volume_flag::internal | volume_flag::persistentIDs, plainVolumeFlagMask, 0};
    contents.volume.wasBoot = true;
    contents.options = bookmark_option::withoutImplicitSecurityScope;
    return contents;
}

BookmarkContents shareContents() {
    BookmarkContents contents;
    contents.pathComponents = {"Volumes", "Share", "d\u00E9j\u00E0 vu.txt"};
    contents.fileIDs = {{25, std::nullopt, std::nullopt}};
    contents.fileName = "Share";
    contents.creationDate = Date(-1.25);
    contents.fileFlags = {file_flag::regularFile, 0x21F, 0x21F};
    contents.createdWithRelativeURL = false;
    contents.relativeDirsUp = 2;
    contents.relativeDirsDown = 3;
    contents.componentsBelowHome = 0;
    contents.userName = "nobody";
    contents.userID = 4'294'967'294;
    contents.volume.path = "/Volumes/Share";
    contents.volume.url = "file:///Volumes/Share/";
    contents.volume.name = "Share";
    contents.volume.capacity = 1'000'000;
    contents.volume.flags = {0, plainVolumeFlagMask, 0};
    contents.volume.mountURL = "smb://demo@server/Share";
    contents.rootVolume = noteContents().volume;
    contents.rootVolume->wasBoot = false;
    contents.volumeDepths = {table_identifier::rootVolume, 0, table_identifier::target, 0};
    contents.wasFileIDFormat = true;
    contents.options = bookmark_option::suitableForBookmarkFile;
    contents.displayName = "d\u00E9j\u00E0 vu";
    return contents;
}

Data bytesOfHex(std::string_view digits) {
    Data bytes;
    std::optional<unsigned> high;
    for (const char digit : digits) {
        if (digit == ' ' || digit == '\n') {
            continue;
        }
        if (high) {
            bytes.push_back(static_cast<std::byte>(*high * 16 + digitValue(digit)));
            high.reset();
        } else {
            high = digitValue(digit);
        }
    }
    EXPECT_FALSE(high) << "half a byte is left over";
    return bytes;
}

Data bytesOfFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream) << path;
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    Data bytes;
    appendText(bytes, text);
    return bytes;
}

Data front(const Data& bytes, std::size_t count) {
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)};
}

Data withByte(Data bytes, std::size_t offset, unsigned value) {
    bytes.at(offset) = static_cast<std::byte>(value);
    return bytes;
}

Data withU32(Data bytes, std::size_t offset, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        bytes.at(offset + i) = static_cast<std::byte>(value >> (8 * i));
    }
    return bytes;
}

BookmarkStructure readWell(const Data& bytes) {
    std::expected<BookmarkStructure, BookmarkFault> structure = readBookmark(bytes);
    if (!structure) {
        ADD_FAILURE() << "at " << structure.error().offset << ": expected " << structure.error().expected;
        return {};
    }
    return std::move(*structure);
}

HandmadeSection::HandmadeSection() {
    appendU32le(bytes_, 0);
}

std::uint32_t HandmadeSection::add(std::uint32_t type, const Data& payload) {
    const std::uint32_t offset = end();
    appendU32le(bytes_, static_cast<std::uint32_t>(payload.size()));
    appendU32le(bytes_, type);
    appendBytes(bytes_, payload);
    bytes_.resize((bytes_.size() + 3) / 4 * 4);
    return offset;
}

std::uint32_t HandmadeSection::addText(std::uint32_t type, std::string_view text) {
    Data payload;
    appendText(payload, text);
    return add(type, payload);
}

std::uint32_t HandmadeSection::addWords(std::uint32_t type, const std::vector<std::uint32_t>& words) {
    Data payload;
    for (const std::uint32_t word : words) {
        appendU32le(payload, word);
    }
    return add(type, payload);
}

std::uint32_t HandmadeSection::addTable(
    std::uint32_t identifier, std::uint32_t next, const std::vector<BookmarkItem>& items) {
    std::vector<std::uint32_t> words{identifier, next, static_cast<std::uint32_t>(items.size())};
    for (const BookmarkItem& item : items) {
        words.insert(words.end(), {item.key, item.valueOffset, item.flags});
    }
    return addWords(record_type::table, words);
}

Data HandmadeSection::bookmark(const std::vector<BookmarkItem>& items) {
    return bookmarkWithTable(addTable(table_identifier::target, 0, items));
}

Data HandmadeSection::bookmarkWithTable(std::uint32_t table) const {
    Data bytes;
    appendText(bytes, "book");
    appendU32le(bytes, bareHeaderSize + end());
    appendU32le(bytes, bookmarkVersion);
    appendU32le(bytes, bareHeaderSize);
    bytes.resize(bareHeaderSize);
    appendU32le(bytes, table);
    appendBytes(bytes, std::span(bytes_).subspan(4));
    return bytes;
}

} // namespace tolvane::tests
