#include "cli/JsonAliasRecord.h"

#include "containers/FindingTexts.h"
#include "platform/values/Utf8.h"

namespace tolvane::cli {

namespace {

using namespace platform;

void writeTextOrNull(JsonWriter& json, std::string_view key, const std::optional<std::string>& text) {
    json.key(key);
    text ? json.text(shownText(*text)) : json.null();
}

void writeNumberOrNull(JsonWriter& json, std::string_view key, const std::optional<std::uint32_t>& number) {
    json.key(key);
    number ? json.unsignedInteger(*number) : json.null();
}

void writeDates(JsonWriter& json, std::string_view key, std::string_view localKey, const AliasDate& date) {
    json.key(key);
    date.utc ? json.date(*date.utc) : json.null();
    json.key(localKey);
    date.local ? json.text(containers::localTimeText(*date.local)) : json.null();
}

void writeItem(JsonWriter& json, const AliasItem& item) {
    json.beginObject().key("tag").unsignedInteger(item.tag).key("name");
    const std::string_view name = aliasTagName(item.tag);
    name.empty() ? json.null() : json.text(name);
    json.key("offset").unsignedInteger(item.offset).key("length").unsignedInteger(item.bytes.size());
    json.key("value").value(aliasItemValue(item).value_or(Value(item.bytes))).endObject();
}

void writeWarnings(JsonWriter& json, const std::vector<BookmarkWarning>& warnings) {
    json.key("warnings").beginArray();
    for (const BookmarkWarning& warning : warnings) {
        json.beginObject().key("offset").unsignedInteger(warning.offset);
        json.key("text").text(warning.text).endObject();
    }
    json.endArray();
}

} // namespace

void writeAliasRecordJson(JsonWriter& json, const AliasRecord& record) {
    json.beginObject().key("version").unsignedInteger(record.version);
    json.key("length").unsignedInteger(record.length);
    json.key("applicationInfo").unsignedInteger(record.applicationInfo);
    json.key("isFolder").boolean(record.isFolder);
    writeTextOrNull(json, "path", record.path());
    json.key("name").text(record.fileName);
    writeDates(json, "created", "createdLocal", record.creationDate);
    writeNumberOrNull(json, "number", record.fileNumber);
    writeNumberOrNull(json, "parentNumber", record.parentNumber);
    json.key("volumeName").text(record.volumeName);
    writeDates(json, "volumeCreated", "volumeCreatedLocal", record.volumeCreationDate);
    json.key("fileSystem").unsignedInteger(record.fileSystem);
    json.key("diskType").unsignedInteger(record.diskType);
    json.key("volumeFlags").unsignedInteger(record.volumeFlags);
    json.key("items").beginArray();
    for (const AliasItem& item : record.items) {
        writeItem(json, item);
    }
    json.endArray().key("diskImage");
    if (record.diskImage.empty()) {
        json.null();
    } else {
        writeAliasRecordJson(json, record.diskImage.front());
    }
    writeWarnings(json, record.warnings);
    json.endObject();
}

} // namespace tolvane::cli
