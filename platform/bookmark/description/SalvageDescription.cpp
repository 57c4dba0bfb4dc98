#include "platform/bookmark/description/SalvageDescription.h"

#include "platform/bookmark/description/BookmarkLineText.h"

namespace tolvane::platform {

namespace {

bool refersToOthers(std::uint32_t type) {
    return type == record_type::array || type == record_type::dictionary || type == record_type::relativeURL;
}

class SalvageText {
public:
    explicit SalvageText(const SalvagedBookmark& salvaged)
        : salvaged_(salvaged)
        , structure_(salvaged.structure) {}

    std::string take() {
        text_ = salvaged_.fault.sentence() + "\nSalvaged: " + std::to_string(structure_.section.size());
        text_ += " of " + std::to_string(salvaged_.statedSectionLength) + " bytes";
        append(", version ", structure_.header.version);
        append(", data at ", structure_.header.size);
        visitPieces(structure_, [this](const auto& piece) { appendPiece(piece); });
        for (const MissingBytes& missing : salvaged_.missing) {
            text_ += "\nMissing: " + std::to_string(missing.length);
            append(" bytes at ", missing.offset);
            text_ += missing.isBeyondEnd ? ", which are not there" : ", in which nothing is whole";
        }
        if (structure_.tables.empty()) {
            append("\nMissing: the table of contents at ", salvaged_.firstTableOffset);
            text_ += ", so what the values are is not known";
        }
        return std::move(text_);
    }

private:
    void append(std::string_view words, std::uint64_t number) {
        text_ += words;
        appendHexadecimal(text_, number);
    }

    void appendPiece(const BookmarkRecord& record) {
        append("\n", record.offset);
        text_.append(") ").append(recordTypeName(record.type)).append(":\"");
        if (refersToOthers(record.type)) {
            text_ += "(";
            for (std::size_t i = 0; i < record.length / 4; ++i) {
                append(i == 0 ? " " : ", ", structure_.word(record, i));
            }
            text_ += " )";
        } else {
            appendRecord(text_, structure_, record);
        }
        text_ += '"';
    }

    void appendPiece(const BookmarkTable& table) {
        append("\nTOC at ", table.offset);
        text_ += ": level=" + std::to_string(table.identifier);
        append(" nextTOC=", table.nextOffset);
        text_ += " items=" + std::to_string(table.items.size());
        for (std::size_t i = 0; i < table.items.size(); ++i) {
            appendItem(i, table.items[i]);
        }
    }

    void appendItem(std::size_t number, const BookmarkItem& item) {
        text_ += "\n" + std::to_string(number);
        append(") itemType=", item.key);
        append(" flags=", item.flags);
        append(" dataOffset=", item.valueOffset);
        const BookmarkRecord* const name = item.isNamed() ? structure_.record(item.nameOffset()) : nullptr;
        text_ += ' ';
        if (name != nullptr && name->type == record_type::string) {
            appendEscaped(text_, structure_.text(*name));
        } else {
            text_ += bookmarkKeyLabel(item.key);
        }
        if (structure_.record(item.valueOffset) == nullptr) {
            text_ += " (missing)";
        }
    }

    const SalvagedBookmark& salvaged_;
    const BookmarkStructure& structure_;
    std::string text_;
};

} // namespace

std::string salvageDescription(const SalvagedBookmark& salvaged) {
    return SalvageText(salvaged).take();
}

Result<std::string> describeSalvaged(std::span<const std::byte> bookmarkData) {
    const auto salvaged = salvageBookmark(bookmarkData);
    if (!salvaged) {
        return std::unexpected(cocoaError(NSFileReadCorruptFileError, salvaged.error().description()));
    }
    return salvageDescription(*salvaged);
}

} // namespace tolvane::platform
