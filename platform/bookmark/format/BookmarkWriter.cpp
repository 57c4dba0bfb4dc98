#include "platform/bookmark/format/BookmarkWriter.h"

#include "platform/bookmark/format/BookmarkHeader.h"
#include "platform/values/ByteCursor.h"

namespace tolvane::platform {

namespace {

/// Writes the data section piece by piece, so that a byte that belongs to no piece would be missing.
class SectionWriter {
public:
    SectionWriter(Data& out, const BookmarkStructure& structure) : out_(out), structure_(structure) {}

    void write() {
        appendU32le(out_, structure_.tables.front().offset);
        appendPadding(4, structure_.leadingPadding);
        visitPieces(structure_, [this](const auto& piece) { append(piece); });
    }

private:
    void append(const BookmarkRecord& record) {
        appendU32le(out_, record.length);
        appendU32le(out_, record.type);
        appendBytes(out_, structure_.payload(record));
        appendPadding(std::size_t{record.offset} + 8 + record.length, record.paddingLength);
    }

    void append(const BookmarkTable& table) {
        for (const std::uint32_t word :
             {table.byteCount, record_type::table, table.identifier, table.nextOffset,
              static_cast<std::uint32_t>(table.items.size())}) {
            appendU32le(out_, word);
        }
        for (const BookmarkItem& item : table.items) {
            for (const std::uint32_t word : {item.key, item.valueOffset, item.flags}) {
                appendU32le(out_, word);
            }
        }
        appendPadding(table.offset + table.length(), table.paddingLength);
    }

    void appendPadding(std::size_t offset, std::size_t length) {
        appendBytes(out_, std::span(structure_.section).subspan(offset, length));
    }

    Data& out_;
    const BookmarkStructure& structure_;
};

Data bytesWithHeader(const BookmarkStructure& structure, const BookmarkHeader& header) {
    Data bytes;
    bytes.reserve(header.size + structure.section.size() + structure.trailing.size());
    appendBookmarkHeader(bytes, header, structure.section.size());
    SectionWriter(bytes, structure).write();
    return bytes;
}

/// The version for a header of the other container, which has its usual size.
std::uint32_t versionInOtherContainer(const BookmarkHeader& header) {
    return header.version == bookmarkVersionWithTeam ? bookmarkVersion : header.version;
}

} // namespace

Data bookmarkBytes(const BookmarkStructure& structure) {
    Data bytes = bytesWithHeader(structure, structure.header);
    appendBytes(bytes, structure.trailing);
    return bytes;
}

Data bareBookmarkBytes(const BookmarkStructure& structure) {
    if (!structure.header.isAliasFile()) {
        return bytesWithHeader(structure, structure.header);
    }
    BookmarkHeader header;
    header.version = versionInOtherContainer(structure.header);
    return bytesWithHeader(structure, header);
}

Data aliasFileBytes(const BookmarkStructure& structure, const Date& written) {
    if (structure.header.isAliasFile()) {
        return bytesWithHeader(structure, structure.header);
    }
    BookmarkHeader header = aliasFileHeader(written);
    header.version = versionInOtherContainer(structure.header);
    return bytesWithHeader(structure, header);
}

} // namespace tolvane::platform
