#include "cli/JsonReport.h"

#include "platform/values/Utf8.h"

namespace tolvane::cli {

namespace {

using platform::Dictionary;
using platform::Value;

/// Writes the facts one after the other, null for what is not there.
class FactsJson {
public:
    FactsJson(JsonWriter& json, const Dictionary& attributes) : json_(json), attributes_(attributes) {}

    void text(std::string_view name, const std::optional<std::string>& text) {
        json_.key(name);
        text ? json_.text(*text) : json_.null();
    }

    void bytes(std::string_view name, std::optional<std::span<const std::byte>> bytes) {
        json_.key(name);
        bytes ? json_.hex(*bytes) : json_.null();
    }

    void integerAttribute(std::string_view name, std::string_view key) {
        const Value* value = attributes_.find(key);
        const auto number = value != nullptr ? value->exactUInt64() : std::nullopt;
        json_.key(name);
        number ? json_.unsignedInteger(*number) : json_.null();
    }

    void textAttribute(std::string_view name, std::string_view key) {
        const auto* held = attribute<std::string>(key);
        json_.key(name);
        held != nullptr ? json_.text(*held) : json_.null();
    }

    void dateAttribute(std::string_view name, std::string_view key) {
        const auto* date = attribute<platform::Date>(key);
        json_.key(name);
        date != nullptr ? json_.date(*date) : json_.null();
    }

    void extendedAttributes(std::string_view name) {
        json_.key(name);
        // Without any attributes at all it is not known whether there are extended ones.
        if (attributes_.empty()) {
            json_.null();
            return;
        }
        json_.beginObject();
        if (const auto* entries = attribute<Dictionary>(platform::NSFileExtendedAttributes)) {
            for (const Dictionary::Entry& entry : *entries) {
                if (const auto* bytes = entry.value.as<platform::Data>()) {
                    json_.key(entry.key).hex(*bytes);
                }
            }
        }
        json_.endObject();
    }

private:
    template <typename Kind>
    const Kind* attribute(std::string_view key) const {
        const Value* value = attributes_.find(key);
        return value != nullptr ? value->as<Kind>() : nullptr;
    }

    JsonWriter& json_;
    const Dictionary& attributes_;
};

void writeFacts(
    JsonWriter& json,
    std::string_view title,
    const inspect::SizeData& sizes,
    const details::GatheredDetails& details) {
    using namespace platform;
    FactsJson facts(json, sizes.inode());
    const std::string path = sizes.url().path();
    json.key("facts").beginObject();
    json.key("title").text(title);
    json.key("path").text(path);
    facts.bytes(
        "pathBytes", isValidUtf8(path) ? std::nullopt : std::optional(std::as_bytes(std::span(path))));
    json.key("urlTotalSize").integer(sizes.uTotalSize());
    json.key("urlDataSize").integer(sizes.uDataSize());
    json.key("xattrSize").integer(sizes.uXattrSize());
    json.key("filemanSize").integer(sizes.fmDataSize());
    facts.integerAttribute("device", NSFileSystemNumber);
    facts.integerAttribute("inode", NSFileSystemFileNumber);
    facts.integerAttribute("permissions", NSFilePosixPermissions);
    facts.integerAttribute("ownerID", NSFileOwnerAccountID);
    facts.integerAttribute("groupID", NSFileGroupOwnerAccountID);
    facts.integerAttribute("linkCount", NSFileReferenceCount);
    facts.textAttribute("fileType", NSFileType);
    facts.text("typeIdentifier", details.typeIdentifier);
    facts.dateAttribute("created", NSFileCreationDate);
    facts.dateAttribute("modified", NSFileModificationDate);
    facts.extendedAttributes("extendedAttributes");
    facts.bytes("bookmark", details.bookmark);
    facts.text(
        "bookmarkPath", details.bookmarkURL ? std::optional(details.bookmarkURL->path()) : std::nullopt);
    json.key("gathered").date(details.gathered);
    json.endObject();
}

} // namespace

void writeReportJson(
    JsonWriter& json,
    std::string_view title,
    const inspect::SizeData& sizes,
    const details::GatheredDetails& details) {
    json.beginObject();
    for (const auto& [name, text] : details::DetailsTexts::all) {
        const details::DetailsTexts::Text& held = details.texts.*text;
        json.key(name).text(held ? std::string_view(*held) : std::string_view());
    }
    writeFacts(json, title, sizes, details);
    json.endObject();
}

} // namespace tolvane::cli
