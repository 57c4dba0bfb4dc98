#include "cli/JsonBookmark.h"

#include "cli/JsonAliasRecord.h"
#include "platform/bookmark/description/BookmarkProperties.h"
#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/bookmark/format/BookmarkValues.h"
#include "platform/values/Utf8.h"

namespace tolvane::cli {

namespace {

using namespace platform;

constexpr std::size_t typeDigits = 4;
constexpr std::size_t wordDigits = 8;

std::string_view containerName(BookmarkContainer container) {
    switch (container) {
    case BookmarkContainer::bare:
        return "bare";
    case BookmarkContainer::bareAlias:
        return "bareAlias";
    case BookmarkContainer::aliasFile:
        return "aliasFile";
    }
    return {};
}

class BookmarkJson {
public:
    BookmarkJson(JsonWriter& json, const BookmarkStructure& structure) : json_(json), structure_(structure) {}

    void write() {
        json_.beginObject();
        json_.key("properties").dictionary(bookmarkProperties(structure_));
        writePieces();
        json_.key("aliasRecord");
        if (const auto record = aliasRecordIn(structure_)) {
            writeAliasRecordJson(json_, *record);
        } else {
            json_.null();
        }
        json_.key("trailingLength").unsignedInteger(structure_.trailing.size());
        json_.key("warnings").beginArray();
        for (const BookmarkWarning& warning : structure_.warnings) {
            json_.beginObject().key("offset").unsignedInteger(warning.offset);
            json_.key("text").text(warning.text).endObject();
        }
        json_.endArray().endObject();
    }

    void writeSalvaged(const SalvagedBookmark& salvaged) {
        json_.beginObject().key("fault").beginObject();
        writeNumber("offset", salvaged.fault.offset);
        json_.key("expected").text(salvaged.fault.expected).endObject();
        writePieces();
        writeNumber("statedSectionLength", salvaged.statedSectionLength);
        writeNumber("firstTableOffset", salvaged.firstTableOffset);
        json_.key("missing").beginArray();
        for (const MissingBytes& missing : salvaged.missing) {
            json_.beginObject();
            writeNumber("offset", missing.offset);
            writeNumber("length", missing.length);
            json_.key("isBeyondEnd").boolean(missing.isBeyondEnd).endObject();
        }
        json_.endArray().endObject();
    }

private:
    void writePieces() {
        writeHeader();
        json_.key("tables").beginArray();
        for (const BookmarkTable& table : structure_.tables) {
            writeTable(table);
        }
        json_.endArray().key("records").beginArray();
        for (const BookmarkRecord& record : structure_.records) {
            writeRecord(record);
        }
        json_.endArray();
    }

    void writeNumber(std::string_view key, std::uint64_t number) { json_.key(key).unsignedInteger(number); }

    void writeHeader() {
        const BookmarkHeader& header = structure_.header;
        json_.key("header").beginObject().key("container").text(containerName(header.container));
        writeNumber("totalLength", header.size + structure_.section.size());
        writeNumber("headerLength", header.size);
        writeNumber("sectionLength", structure_.section.size());
        writeNumber("version", header.version);
        json_.key("versionHex").hexNumber(header.version, wordDigits);
        json_.key("securityScopeKey");
        header.isAliasFile() ? json_.null() : json_.hex(header.securityScopeKey);
        json_.key("aliasFile");
        if (header.isAliasFile()) {
            json_.beginObject();
            writeNumber("repeatedHeaderLength", header.repeatedSize);
            json_.key("beforeTime").hex(header.beforeTime);
            json_.key("written").date(header.writtenDate());
            json_.key("afterTime").hex(header.afterTime).endObject();
        } else {
            json_.null();
        }
        json_.key("teamIdentifier");
        header.hasTeamIdentifier() ? json_.text(header.teamIdentifier()) : json_.null();
        json_.key("extra").hex(header.extra).endObject();
    }

    void writeTable(const BookmarkTable& table) {
        json_.beginObject();
        writeNumber("identifier", table.identifier);
        writeNumber("offset", table.offset);
        writeNumber("next", table.nextOffset);
        writeNumber("byteCount", table.byteCount);
        json_.key("items").beginArray();
        for (const BookmarkItem& item : table.items) {
            writeItem(item);
        }
        json_.endArray().endObject();
    }

    void writeItem(const BookmarkItem& item) {
        json_.beginObject();
        writeNumber("key", item.key);
        json_.key("keyHex").hexNumber(item.key, typeDigits);
        const BookmarkRecord* const name = item.isNamed() ? structure_.record(item.nameOffset()) : nullptr;
        writeTextOrNull("name", name != nullptr ? std::optional(structure_.text(*name)) : std::nullopt);
        const std::string_view label = item.isNamed() ? std::string_view() : bookmarkKeyLabel(item.key);
        writeTextOrNull("label", label.empty() ? std::nullopt : std::optional(label));
        writeNumber("flags", item.flags);
        writeNumber("valueOffset", item.valueOffset);
        json_.endObject();
    }

    void writeTextOrNull(std::string_view key, std::optional<std::string_view> text) {
        json_.key(key);
        text ? json_.text(*text) : json_.null();
    }

    void writeRecord(const BookmarkRecord& record) {
        json_.beginObject();
        writeNumber("offset", record.offset);
        writeNumber("type", record.type);
        json_.key("typeHex").hexNumber(record.type, typeDigits);
        json_.key("typeName").text(recordTypeName(record.type));
        writeNumber("length", record.length);
        json_.key("value");
        switch (record.type) {
        case record_type::array:
            writeOffsets(record, 0, record.length / wordLength);
            break;
        case record_type::dictionary:
            writePairs(record);
            break;
        case record_type::relativeURL:
            json_.beginObject();
            writeNumber("base", structure_.word(record, 0));
            writeNumber("part", structure_.word(record, 1));
            json_.endObject();
            break;
        case record_type::data:
            json_.hex(structure_.payload(record));
            break;
        case record_type::string:
        case record_type::absoluteURL:
            json_.text(structure_.text(record));
            break;
        default:
            writeLeaf(record);
        }
        json_.endObject();
    }

    void writeOffsets(const BookmarkRecord& record, std::size_t first, std::size_t end) {
        json_.beginArray();
        for (std::size_t i = first; i < end; ++i) {
            json_.unsignedInteger(structure_.word(record, i));
        }
        json_.endArray();
    }

    void writePairs(const BookmarkRecord& record) {
        json_.beginArray();
        for (std::size_t i = 0; i + 1 < record.length / wordLength; i += 2) {
            writeOffsets(record, i, i + 2);
        }
        json_.endArray();
    }

    void writeLeaf(const BookmarkRecord& record) {
        const Value value = bookmarkValue(structure_, record);
        if (const auto* const uuid = value.as<UUID>()) {
            json_.text(uuid->text());
        } else if (const auto* const single = value.as<float>()) {
            json_.fraction(*single);
        } else if (const auto* const fraction = value.as<double>()) {
            json_.fraction(*fraction);
        } else if (value.as<Dictionary>() != nullptr) {
            // What is not understood is described as a dictionary.
            json_.beginObject().key("bytes").hex(structure_.payload(record)).endObject();
        } else {
            json_.value(value);
        }
    }

    static constexpr std::size_t wordLength = 4;

    JsonWriter& json_;
    const BookmarkStructure& structure_;
};

std::string_view volumeMatchName(VolumeMatch match) {
    switch (match) {
    case VolumeMatch::uuid:
        return "uuid";
    case VolumeMatch::nameAndCapacity:
        return "nameAndCapacity";
    case VolumeMatch::nameAndCreationDate:
        return "nameAndCreationDate";
    case VolumeMatch::notNamed:
        return "notNamed";
    case VolumeMatch::unknown:
        return "unknown";
    }
    return {};
}

std::string_view itemMatchName(ItemMatch match) {
    switch (match) {
    case ItemMatch::path:
        return "path";
    case ItemMatch::fileNumbers:
        return "fileNumbers";
    case ItemMatch::search:
        return "search";
    case ItemMatch::unknown:
        return "unknown";
    }
    return {};
}

void writeFileNumber(JsonWriter& json, std::string_view key, const std::optional<std::int64_t>& number) {
    json.key(key);
    number ? json.integer(*number) : json.null();
}

void writeDate(JsonWriter& json, std::string_view key, const std::optional<Date>& date) {
    json.key(key);
    date ? json.date(*date) : json.null();
}

} // namespace

void writeBookmarkJson(JsonWriter& json, const BookmarkStructure& structure) {
    BookmarkJson(json, structure).write();
}

void writeSalvageJson(JsonWriter& json, const SalvagedBookmark& salvaged) {
    BookmarkJson(json, salvaged.structure).writeSalvaged(salvaged);
}

void writeResolutionJson(
    JsonWriter& json,
    const ResolvedBookmark& resolved,
    std::string_view volumePath,
    std::span<const ComparedFact> compared) {
    const std::string path = resolved.url ? resolved.url->path() : std::string();
    const BookmarkMatch& match = resolved.match;
    json.beginObject().key("path").text(shownText(path)).key("pathBytes");
    isValidUtf8(path) ? json.null() : json.hex(std::as_bytes(std::span(path)));
    json.key("volumePath");
    volumePath.empty() ? json.null() : json.text(volumePath);
    json.key("foundBy").text(itemMatchName(match.item));
    json.key("isStale").boolean(resolved.isStale);
    json.key("volumeMatchedBy").text(volumeMatchName(match.volume));
    writeFileNumber(json, "storedNumber", match.storedNumber);
    writeFileNumber(json, "actualNumber", match.actualNumber);
    writeDate(json, "storedCreationDate", match.storedCreationDate);
    writeDate(json, "actualCreationDate", match.actualCreationDate);
    json.key("compared").beginArray();
    for (const ComparedFact& fact : compared) {
        json.beginObject().key("fact").text(fact.name);
        json.key("stored").value(fact.stored.value_or(Value()));
        json.key("found").value(fact.found.value_or(Value())).key("differs");
        fact.differs ? json.boolean(*fact.differs) : json.null();
        json.endObject();
    }
    json.endArray().endObject();
}

} // namespace tolvane::cli
