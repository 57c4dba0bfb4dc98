#include "containers/FindingsFile.h"

#include "containers/FindingTexts.h"
#include "containers/JsonFinding.h"
#include "platform/values/Utf8.h"

#include <algorithm>
#include <array>

namespace tolvane::containers {

namespace {

constexpr std::string_view endOfLine = "\r\n";

/// Spreadsheets run what begins like this as a formula, also in the wide forms. A text that begins with the
/// apostrophe that keeps them from it gets one as well, so that what was there is always known.
bool isLikeFormula(std::string_view text) {
    constexpr std::array<std::string_view, 12> beginnings{"=",  "+", "-",      "@",      "\t",     "\r",
                                                          "\n", "'", "\uFF1D", "\uFF0B", "\uFF0D", "\uFF20"};
    return std::ranges::any_of(
        beginnings, [text](std::string_view beginning) { return text.starts_with(beginning); });
}

/// A field in quotes if it has to be.
std::string csvField(std::string_view bytes) {
    std::string text = platform::shownText(bytes);
    if (isLikeFormula(text)) {
        text.insert(text.begin(), '\'');
    }
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        return text;
    }
    std::string quoted = "\"";
    for (const char c : text) {
        quoted += c == '"' ? std::string_view("\"\"") : std::string_view(&c, 1);
    }
    return quoted + '"';
}

std::string dateText(const std::optional<platform::Date>& date) {
    return date && date->hasCalendarDate() ? date->iso8601() : "";
}

std::string joined(const std::vector<std::string>& warnings) {
    std::string text;
    for (const std::string& warning : warnings) {
        text += (text.empty() ? "" : "\n") + warning;
    }
    return text;
}

} // namespace

std::string findingsAsJson(
    std::string_view file, std::string_view container, std::span<const Finding> findings) {
    std::string text;
    for (std::size_t i = 0; i < findings.size(); ++i) {
        platform::JsonWriter json([&text](std::string_view piece) { text += piece; }, false);
        writeFindingJson(json, file, i, container, findings[i]);
        json.finish();
        text += '\n';
    }
    return text;
}

std::string findingsAsCsv(
    std::string_view file, std::string_view container, std::span<const Finding> findings) {
    std::string text =
        "file,index,where,container,kind,version,length,path,url,volumeName,volumeUUID,created,"
        "createdLocal,name,neighbour,mismatch,warnings";
    text += endOfLine;
    for (std::size_t i = 0; i < findings.size(); ++i) {
        const Finding& finding = findings[i];
        const std::array<std::string, 17> fields{
            std::string(file),
            std::to_string(i),
            finding.where,
            std::string(container),
            std::string(findingKindName(finding.kind)),
            finding.version ? std::to_string(*finding.version) : "",
            std::to_string(finding.bytes.size()),
            finding.path.value_or(""),
            finding.url.value_or(""),
            finding.volumeName.value_or(""),
            finding.volumeUUID.value_or(""),
            finding.createdLocal ? "" : dateText(finding.created),
            finding.createdLocal ? localTimeText(*finding.createdLocal) : "",
            finding.name.value_or(""),
            finding.neighbour.value_or(""),
            finding.mismatch ? (*finding.mismatch ? "true" : "false") : "",
            joined(finding.warnings)};
        std::string_view separator;
        for (const std::string& field : fields) {
            text += separator;
            text += csvField(field);
            separator = ",";
        }
        text += endOfLine;
    }
    return text;
}

} // namespace tolvane::containers
