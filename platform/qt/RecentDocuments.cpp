#include "platform/qt/RecentDocuments.h"

#include "platform/qt/QtUserDefaults.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace tolvane::platform {

namespace {

constexpr std::string_view recentDocumentsKey = "RecentDocuments";

} // namespace

std::vector<URL> RecentDocuments::documents() const {
    std::vector<URL> documents;
    for (const std::string& text : defaults_.textsForKey(recentDocumentsKey)) {
        const auto document = URL::fromText(text);
        if (document && documents.size() < mostDocuments
            && std::ranges::find(documents, *document) == documents.end()) {
            documents.push_back(*document);
        }
    }
    return documents;
}

void RecentDocuments::add(const URL& document) {
    std::vector<std::string> texts{document.absoluteString()};
    for (const URL& other : documents()) {
        if (other != document && texts.size() < mostDocuments) {
            texts.push_back(other.absoluteString());
        }
    }
    defaults_.setTexts(texts, recentDocumentsKey);
    observers_.notify();
}

void RecentDocuments::clear() {
    defaults_.setTexts({}, recentDocumentsKey);
    observers_.notify();
}

} // namespace tolvane::platform
