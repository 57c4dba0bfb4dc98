#include "cli/JsonAttributes.h"

namespace tolvane::cli {

void writeExplanationJson(JsonWriter& json, const attributes::Explanation& explanation) {
    json.beginObject();
    json.key("name").text(explanation.name);
    json.key("title").text(explanation.title);
    json.key("summary").text(explanation.summary);
    json.key("certainty").text(nameOf(explanation.certainty));
    json.key("fields").beginArray();
    for (const attributes::Field& field : explanation.fields) {
        json.beginObject();
        json.key("name").text(field.name);
        json.key("text").text(field.text);
        json.key("value").value(field.value);
        json.endObject();
    }
    json.endArray();
    json.key("notes").beginArray();
    for (const std::string& note : explanation.notes) {
        json.text(note);
    }
    json.endArray();
    json.endObject();
}

void writeVerifiedJson(JsonWriter& json, const std::vector<verification::Verified>& verified) {
    json.beginArray();
    for (const verification::Verified& one : verified) {
        json.beginObject();
        json.key("name").text(one.name);
        json.key("algorithm").text(one.algorithm);
        json.key("result").text(verification::nameOf(one.fit));
        json.key("reason");
        one.reason.empty() ? json.null() : json.text(one.reason);
        json.endObject();
    }
    json.endArray();
}

} // namespace tolvane::cli
