#include "cli/JsonReport.h"

#include "platform/Utf8.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <span>
#include <string_view>
#include <variant>

namespace tolvane::cli {

namespace {

using Json = nlohmann::ordered_json;
using platform::Dictionary;
using platform::Value;

std::string hexText(std::span<const std::byte> bytes) {
    static constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const std::byte byte : bytes) {
        text += digits[std::to_integer<std::size_t>(byte) >> 4U];
        text += digits[std::to_integer<std::size_t>(byte) & 0xFU];
    }
    return text;
}

struct TextOfOutlet {
    std::optional<std::string> operator()(const platform::Outlet<platform::TextField>* field) const {
        return (*field)->stringValue();
    }
    std::optional<std::string> operator()(const platform::Outlet<platform::TextView>* view) const {
        return (*view)->string();
    }
    // Frames and check boxes hold no text.
    template <typename Control>
    std::optional<std::string> operator()(const platform::Outlet<Control>* /*outlet*/) const {
        return std::nullopt;
    }
};

Json integerFact(const Dictionary& attributes, std::string_view key) {
    const Value* value = attributes.find(key);
    const auto number = value != nullptr ? value->exactUInt64() : std::nullopt;
    return number ? Json(*number) : Json();
}

Json textFact(const Dictionary& attributes, std::string_view key) {
    const Value* value = attributes.find(key);
    const auto* text = value != nullptr ? value->as<std::string>() : nullptr;
    return text != nullptr ? Json(*text) : Json();
}

Json dateFact(const Dictionary& attributes, std::string_view key) {
    const Value* value = attributes.find(key);
    const auto* date = value != nullptr ? value->as<platform::Date>() : nullptr;
    return date != nullptr ? Json(date->iso8601()) : Json();
}

Json extendedAttributes(const Dictionary& attributes) {
    // Without any attributes at all it is not known whether there are extended ones.
    if (attributes.empty()) {
        return {};
    }
    Json object = Json::object();
    const Value* value = attributes.find(platform::NSFileExtendedAttributes);
    const auto* entries = value != nullptr ? value->as<Dictionary>() : nullptr;
    if (entries == nullptr) {
        return object;
    }
    for (const Dictionary::Entry& entry : *entries) {
        if (const auto* bytes = entry.value.as<platform::Data>()) {
            object[entry.key] = hexText(*bytes);
        }
    }
    return object;
}

Json facts(const inspect::SizeData& sizes) {
    using namespace platform;
    const Dictionary& attributes = sizes.inode();
    const std::string path = sizes.url().path();
    Json object;
    object["pathBytes"] = isValidUtf8(path) ? Json() : Json(hexText(std::as_bytes(std::span(path))));
    object["urlTotalSize"] = sizes.uTotalSize();
    object["urlDataSize"] = sizes.uDataSize();
    object["xattrSize"] = sizes.uXattrSize();
    object["filemanSize"] = sizes.fmDataSize();
    object["device"] = integerFact(attributes, NSFileSystemNumber);
    object["inode"] = integerFact(attributes, NSFileSystemFileNumber);
    object["permissions"] = integerFact(attributes, NSFilePosixPermissions);
    object["ownerID"] = integerFact(attributes, NSFileOwnerAccountID);
    object["groupID"] = integerFact(attributes, NSFileGroupOwnerAccountID);
    object["linkCount"] = integerFact(attributes, NSFileReferenceCount);
    object["fileType"] = textFact(attributes, NSFileType);
    object["created"] = dateFact(attributes, NSFileCreationDate);
    object["modified"] = dateFact(attributes, NSFileModificationDate);
    object["extendedAttributes"] = extendedAttributes(attributes);
    return object;
}

} // namespace

std::string jsonReport(const details::ViewController& window, const inspect::SizeData& sizes, bool ascii) {
    Json object;
    for (const platform::OutletTable::Entry& entry : window.outlets().entries()) {
        if (auto text = std::visit(TextOfOutlet{}, entry.outlet)) {
            object[std::string(entry.name)] = *std::move(text);
        }
    }
    object["facts"] = facts(sizes);
    return object.dump(-1, ' ', ascii, Json::error_handler_t::replace);
}

} // namespace tolvane::cli
