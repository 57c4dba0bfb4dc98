#include "containers/FindingTexts.h"

namespace tolvane::containers {

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

std::string localTimeText(const platform::Date& date) {
    const std::string text = date.iso8601();
    return text.substr(0, text.find('.'));
}

} // namespace tolvane::containers
