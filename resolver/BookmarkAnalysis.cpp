#include "resolver/BookmarkAnalysis.h"

#include "platform/Description.h"

#include <string_view>

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

std::string bookmarkAnalysis(
    const std::optional<platform::Dictionary>& allProperties,
    const std::optional<platform::Dictionary>& detailedDescription) {
    return debugNotation(allProperties) + "\n\n\n" + debugNotation(detailedDescription);
}

} // namespace tolvane::resolver
