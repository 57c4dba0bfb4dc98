#include "tests/support/AliasRecords.h"

#include "platform/values/ByteCursor.h"
#include "tests/support/AppleDoubleFiles.h"

namespace tolvane::tests {

using namespace platform;

namespace {

void appendShortText(Data& out, std::string_view text, std::size_t room) {
    const std::size_t end = out.size() + room;
    appendBigEndianTo(out, text.size(), 1);
    appendText(out, text);
    out.resize(end);
}

void appendLongDate(Data& out, std::uint32_t seconds) {
    appendBigEndianTo(out, seconds, 6);
    appendBigEndianTo(out, 0, 2);
}

} // namespace

Data writtenAlias(const WrittenAlias& alias) {
    Data bytes;
    appendBigEndianTo(bytes, 0, 4);
    appendBigEndianTo(bytes, 0, 2);
    appendBigEndianTo(bytes, alias.version, 2);
    appendBigEndianTo(bytes, alias.isFolder ? 1 : 0, 2);
    if (alias.version == 2) {
        appendShortText(bytes, alias.volume, 28);
        appendBigEndianTo(bytes, alias.volumeTime, 4);
        appendText(bytes, "H+");
        appendBigEndianTo(bytes, 5, 2);
        appendBigEndianTo(bytes, alias.parentNumber, 4);
        appendShortText(bytes, alias.name, 64);
        appendBigEndianTo(bytes, alias.number, 4);
        appendBigEndianTo(bytes, alias.time, 4);
        appendText(bytes, "TEXTttxt");
        appendBigEndianTo(bytes, 0xFFFF'FFFF, 4);
        appendBigEndianTo(bytes, 0x0D02, 4);
        bytes.resize(150);
    } else {
        appendLongDate(bytes, alias.volumeTime);
        appendText(bytes, "H+");
        appendBigEndianTo(bytes, 0, 4);
        appendBigEndianTo(bytes, alias.parentNumber, 4);
        appendBigEndianTo(bytes, alias.number, 4);
        appendLongDate(bytes, alias.time);
        appendBigEndianTo(bytes, 0x0920, 4);
        bytes.resize(58);
    }
    for (const auto& [tag, data] : alias.tags) {
        appendBigEndianTo(bytes, tag, 2);
        appendBigEndianTo(bytes, data.size(), 2);
        appendText(bytes, data);
        bytes.resize(bytes.size() + data.size() % 2);
    }
    if (alias.hasEnd) {
        appendBigEndianTo(bytes, 0xFFFF'0000, 4);
    }
    bytes[4] = static_cast<std::byte>(bytes.size() >> 8U);
    bytes[5] = static_cast<std::byte>(bytes.size());
    return bytes;
}

std::string unicodeTag(std::string_view ascii) {
    Data bytes;
    appendBigEndianTo(bytes, ascii.size(), 2);
    appendWideTextTo(bytes, ascii);
    return std::string(textOfBytes(bytes));
}

std::string dateTag(std::uint32_t seconds) {
    Data bytes;
    appendLongDate(bytes, seconds);
    return std::string(textOfBytes(bytes));
}

WrittenAlias noteAlias(unsigned version) {
    WrittenAlias alias;
    alias.version = version;
    using namespace std::string_literals;
    alias.tags = {
        {0, "folder"},
        {1, "\0\0\0\x14"s},
        {2, "Disk:folder:note.txt"},
        {14, unicodeTag("note.txt")},
        {15, unicodeTag("Disk")},
        {18, "/folder/note.txt"},
        {19, "/Volumes/Disk"}};
    return alias;
}

WrittenAlias noteAliasInDiskImage(unsigned version) {
    WrittenAlias image = noteAlias();
    image.tags = {{18, "/Users/demo/Disk.dmg"}, {19, "/"}};
    WrittenAlias alias = noteAlias(version);
    alias.tags.emplace_back(20, textOfBytes(writtenAlias(image)));
    return alias;
}

} // namespace tolvane::tests
