#include "containers/FindingTexts.h"

#include "platform/values/HexDigits.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tolvane::containers {

namespace {

using Description = std::pair<std::string_view, std::string_view>;

constexpr std::array<Description, 20> descriptions{{
    {"bookmark", "bookmark data"},
    {"aliasFile", "an alias file"},
    {"aliasRecord", "an alias record"},
    {"folderSettings", "a folder's .DS_Store"},
    {"appleDouble", "an AppleDouble file"},
    {"resourceFork", "a resource fork"},
    {"xml", "an XML document"},
    {"text", "text"},
    {"sharedFileList", "a shared file list"},
    {"backgroundItems", "a list of background items"},
    {"loginItems", "a list of login items"},
    {"dock", "a list of the Dock"},
    {"finder", "settings of the Finder"},
    {"recentItems", "a list of recent items"},
    {"sidebarLists", "lists of the sidebar"},
    {"downloads", "a list of downloads"},
    {"folderActions", "a list of Folder Actions"},
    {"timeMachine", "settings of Time Machine"},
    {"internetLocation", "an internet location"},
    {"keyedArchive", "a keyed archive"},
}};

/// Adds "title: text" as a line.
void addLine(std::string& lines, std::string_view title, std::string_view text) {
    lines += title;
    lines += ": ";
    for (const char c : text) {
        lines += c == '\n' ? std::string_view("⟨LF⟩") : std::string_view(&c, 1);
    }
    lines += '\n';
}

void addLine(std::string& lines, std::string_view title, const std::optional<std::string>& text) {
    if (text) {
        addLine(lines, title, std::string_view(*text));
    }
}

std::string formText(const Finding& finding) {
    std::string text(findingKindName(finding.kind));
    if (finding.version) {
        std::string digits;
        platform::appendHex(digits, *finding.version, 1);
        text += ", version "
                + (finding.kind == FindingKind::alias ? std::to_string(*finding.version) : "0x" + digits);
    }
    if (!finding.bytes.empty()) {
        text += ", " + std::to_string(finding.bytes.size()) + " bytes";
    }
    return text;
}

} // namespace

std::string_view findingKindName(FindingKind kind) {
    switch (kind) {
    case FindingKind::bookmark:
        return "bookmark";
    case FindingKind::alias:
        return "alias";
    case FindingKind::url:
        return "url";
    case FindingKind::origin:
        return "origin";
    }
    return {};
}

std::string targetText(const Finding& finding) {
    if (!finding.isReadable) {
        return "not readable";
    }
    return finding.path ? *finding.path : finding.url ? *finding.url : finding.name.value_or("");
}

std::string volumeText(const Finding& finding) {
    return finding.volumeName.value_or(finding.volumeUUID.value_or(""));
}

std::string createdText(const Finding& finding) {
    if (finding.createdLocal) {
        return localTimeText(*finding.createdLocal) + " local time";
    }
    return finding.created ? finding.created->description() : "";
}

std::string flagsText(const Finding& finding) {
    std::string text;
    for (const std::string& flag : finding.flags) {
        text += (text.empty() ? "" : ", ") + flag;
    }
    return text;
}

std::string localTimeText(const platform::Date& date) {
    const std::string text = date.iso8601();
    return text.substr(0, text.find('.'));
}

std::string_view containerDescription(std::string_view container) {
    const auto found = std::ranges::find(descriptions, container, &Description::first);
    return found == descriptions.end() ? "a property list" : found->second;
}

std::string findingDetails(const Finding& finding) {
    std::string lines;
    addLine(lines, "Kind", std::string_view(formText(finding)));
    if (!finding.where.empty()) {
        addLine(lines, "Where in the file", std::string_view(finding.where));
    }
    addLine(lines, "Path", finding.path);
    addLine(lines, "URL", finding.url);
    addLine(lines, "Volume", finding.volumeName);
    addLine(lines, "Volume UUID", finding.volumeUUID);
    if (const std::string created = createdText(finding); !created.empty()) {
        addLine(lines, "Created", std::string_view(created));
    }
    addLine(lines, "Name", finding.name);
    if (!finding.flags.empty()) {
        addLine(lines, "Flags", std::string_view(flagsText(finding)));
    }
    addLine(lines, "Beside it", finding.neighbour);
    if (finding.mismatch) {
        addLine(
            lines, "Agreement",
            std::string_view(
                *finding.mismatch ? "differs: the bookmark names another item than the path or URL beside it"
                                  : "agrees with the path or URL beside it"));
    }
    for (const std::string& warning : finding.warnings) {
        addLine(lines, finding.isReadable ? "Warning" : "Not readable", std::string_view(warning));
    }
    return lines;
}

} // namespace tolvane::containers
