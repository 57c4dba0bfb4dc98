#include "platform/qt/application/RecentDocuments.h"

#include "platform/qt/application/QtUserDefaults.h"

#include <algorithm>
#include <chrono>

namespace tolvane::platform {

constexpr std::string_view recentDocumentsKey = "RecentDocuments";

RecentDocuments::RecentDocuments(QtUserDefaults& defaults) : defaults_(defaults) {
    constexpr std::chrono::milliseconds afterTheWindows{500};
    writing_.setSingleShot(true);
    writing_.setInterval(afterTheWindows);
    QObject::connect(&writing_, &QTimer::timeout, &writing_, [this] { write(); });
}

std::vector<URL> RecentDocuments::documents() const {
    std::vector<URL> documents = added_;
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
    std::erase(added_, document);
    added_.insert(added_.begin(), document);
    if (added_.size() > mostDocuments) {
        added_.pop_back();
    }
    writing_.start();
    observers_.notify();
}

void RecentDocuments::write() {
    writing_.stop();
    if (added_.empty()) {
        return;
    }
    std::vector<std::string> texts;
    for (const URL& document : documents()) {
        texts.push_back(document.absoluteString());
    }
    defaults_.setTexts(texts, recentDocumentsKey);
    added_.clear();
}

void RecentDocuments::clear() {
    writing_.stop();
    added_.clear();
    defaults_.setTexts({}, recentDocumentsKey);
    observers_.notify();
}

} // namespace tolvane::platform
