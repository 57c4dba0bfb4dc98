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

} // namespace tolvane::cli
