#include "platform/bookmark/description/BookmarkDescription.h"

#include "platform/bookmark/description/AliasDescription.h"
#include "platform/bookmark/description/BookmarkLineText.h"
#include "platform/bookmark/format/AliasBookmark.h"

namespace tolvane::platform {

namespace {

class DetailedDescription {
public:
    explicit DetailedDescription(const BookmarkStructure& structure) : structure_(structure) {}

    std::string take() {
        appendHeader();
        for (const BookmarkTable& table : structure_.tables) {
            appendTable(table);
        }
        for (const BookmarkWarning& warning : structure_.warnings) {
            startLine("Warning at ", warning.offset);
            text_.append(": ").append(warning.text);
        }
        if (const auto record = aliasRecordIn(structure_)) {
            appendAliasDescription(text_, *record);
        }
        return std::move(text_);
    }

private:
    /// Ends the previous line and begins one with a word and a hexadecimal number.
    void startLine(std::string_view word, std::uint64_t number) {
        text_.append("\n").append(word);
        appendHexadecimal(text_, number);
    }

    void append(std::string_view word, std::uint64_t number) {
        text_ += word;
        appendHexadecimal(text_, number);
    }

    void appendHeader() {
        const BookmarkHeader& header = structure_.header;
        switch (header.container) {
        case BookmarkContainer::bare:
            text_ += "Bookmark data: ";
            break;
        case BookmarkContainer::bareAlias:
            text_ += "Bookmark data of an alias record: ";
            break;
        case BookmarkContainer::aliasFile:
            text_ += "Alias file: ";
            break;
        }
        text_ += std::to_string(header.size + structure_.section.size());
        append(" bytes, version ", header.version);
        append(", data at ", header.size);
        if (header.isAliasFile()) {
            text_.append(", written ").append(header.writtenDate().description());
        }
        if (header.hasTeamIdentifier()) {
            text_ += "\nTeam identifier: ";
            appendEscaped(text_, header.teamIdentifier());
        }
        if (header.hasSecurityScopeKey()) {
            text_ += "\nSecurity scope key: ";
            appendAngleBytes(text_, header.securityScopeKey);
        }
    }

    void appendTable(const BookmarkTable& table) {
        startLine("TOC at ", table.offset);
        text_.append(": level=").append(std::to_string(table.identifier));
        append(" nextTOC=", table.nextOffset);
        text_.append(" items=").append(std::to_string(table.items.size()));
        for (std::size_t i = 0; i < table.items.size(); ++i) {
            appendItem(i, table.items[i]);
        }
    }

    void appendItem(std::size_t number, const BookmarkItem& item) {
        text_.append("\n").append(std::to_string(number)).append(")");
        append(" itemType=", item.key);
        append(" flags=", item.flags);
        append(" dataOffset=", item.valueOffset);
        text_ += ' ';
        appendLabel(item);
        text_ += ":\"";
        if (const BookmarkRecord* const record = structure_.record(item.valueOffset)) {
            appendValue(item.key, *record);
        }
        text_ += '"';
    }

    void appendLabel(const BookmarkItem& item) {
        const BookmarkRecord* const name = item.isNamed() ? structure_.record(item.nameOffset()) : nullptr;
        if (name != nullptr) {
            appendEscaped(text_, structure_.text(*name));
        } else {
            text_ += bookmarkKeyLabel(item.key);
        }
    }

    void appendValue(std::uint32_t key, const BookmarkRecord& record) {
        const bool holdsFlags = key == bookmark_key::fileFlags || key == bookmark_key::volumeFlags;
        const auto flags = holdsFlags ? bookmarkFlags(structure_, record) : std::nullopt;
        if (flags) {
            appendFlags(text_, *flags);
        } else {
            appendRecord(text_, structure_, record);
        }
    }

    const BookmarkStructure& structure_;
    std::string text_;
};

} // namespace

std::string bookmarkDetailedDescription(const BookmarkStructure& structure) {
    return DetailedDescription(structure).take();
}

} // namespace tolvane::platform
