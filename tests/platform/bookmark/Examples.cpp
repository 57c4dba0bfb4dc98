#include "tests/platform/bookmark/Examples.h"

#include "platform/values/ByteCursor.h"
#include "platform/values/HexDigits.h"
#include "tests/support/ScriptedSources.h"

namespace tolvane::tests {

using namespace platform;

Data noteBookmark() {
    return corpusData("note.bookmark");
}

Data noteAliasFile() {
    return corpusData("note.alias");
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

Data dataOfHex(std::string_view digits) {
    std::string packed(digits);
    std::erase(packed, ' ');
    EXPECT_EQ(packed.size() % 2, 0U) << "half a byte is left over";
    Data bytes;
    for (std::size_t i = 0; i + 1 < packed.size(); i += 2) {
        const int high = valueOfHexDigit(packed[i]);
        const int low = valueOfHexDigit(packed[i + 1]);
        EXPECT_TRUE(high >= 0 && low >= 0) << packed.substr(i, 2);
        bytes.push_back(static_cast<std::byte>(16 * high + low));
    }
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
    return add(type, bytesOf(text));
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
