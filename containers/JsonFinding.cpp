#include "containers/JsonFinding.h"

#include "containers/FindingTexts.h"

#include <optional>

namespace tolvane::containers {

using platform::JsonWriter;

namespace {

void writeText(JsonWriter& json, std::string_view key, const std::optional<std::string>& text) {
    json.key(key);
    text ? json.text(*text) : json.null();
}

void writeCreated(JsonWriter& json, const Finding& finding) {
    if (finding.createdLocal) {
        json.key("createdLocal").text(localTimeText(*finding.createdLocal));
        return;
    }
    json.key("created");
    finding.created ? json.date(*finding.created) : json.null();
}

} // namespace

void writeFindingJson(
    JsonWriter& json,
    std::string_view file,
    std::size_t index,
    std::string_view container,
    const Finding& finding) {
    json.beginObject().key("file").text(file).key("index").unsignedInteger(index);
    json.key("where").text(finding.where).key("container").text(container);
    json.key("kind").text(findingKindName(finding.kind)).key("version");
    finding.version ? json.unsignedInteger(*finding.version) : json.null();
    json.key("length").unsignedInteger(finding.bytes.size());
    writeText(json, "path", finding.path);
    writeText(json, "url", finding.url);
    writeText(json, "volumeName", finding.volumeName);
    writeText(json, "volumeUUID", finding.volumeUUID);
    writeCreated(json, finding);
    writeText(json, "name", finding.name);
    writeText(json, "neighbour", finding.neighbour);
    json.key("mismatch");
    finding.mismatch ? json.boolean(*finding.mismatch) : json.null();
    json.key("warnings").beginArray();
    for (const std::string& warning : finding.warnings) {
        json.text(warning);
    }
    json.endArray().endObject();
}

} // namespace tolvane::containers
