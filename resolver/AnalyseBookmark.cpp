#include "resolver/AnalyseBookmark.h"

#include "platform/values/Description.h"

namespace tolvane::resolver {

namespace {

std::string debugNotation(const std::optional<platform::Dictionary>& answer) {
    if (!answer) {
        return "nil";
    }
    if (answer->empty()) {
        return "Optional([:])";
    }
    std::string text = "Optional([";
    std::string_view separator;
    for (const platform::Dictionary::Entry& entry : *answer) {
        text += separator;
        text += "__C.NSURLResourceKey(_rawValue: " + entry.key + "): ";
        text += platform::description(entry.value);
        separator = ", ";
    }
    text += "])";
    return text;
}

} // namespace

std::string cleanedBookmarkText(std::string text) {
    std::erase_if(text, [](char c) { return c == ' ' || c == '\n' || c == '\t'; });
    return text;
}

std::expected<platform::Data, platform::Base64Fault> decodedBookmark(std::string_view cleanedText) {
    if (auto bytes = platform::base64DecodedData(cleanedText)) {
        return *std::move(bytes);
    }
    return std::unexpected(platform::base64Fault(cleanedText).value_or(platform::Base64Fault()));
}

std::string base64Reason(const platform::Base64Fault& fault) {
    return "Expected at character " + std::to_string(fault.offset + 1) + ": " + std::string(fault.expected)
           + ".";
}

std::string bookmarkAnalysis(const platform::StoredProperties& properties) {
    const std::string allProperties = debugNotation(properties(platform::NSURLBookmarkAllPropertiesKey));
    return allProperties + "\n\n\n" + debugNotation(properties(platform::NSURLBookmarkDetailedDescription));
}

} // namespace tolvane::resolver
