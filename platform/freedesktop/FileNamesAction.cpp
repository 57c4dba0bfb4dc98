#include "platform/freedesktop/FileNamesAction.h"

#include "platform/values/Utf8.h"

namespace tolvane::platform {

RequestedAction fileNamesAction(const std::vector<URL>& urls) {
    std::vector<std::string> texts;
    texts.reserve(urls.size());
    for (const URL& url : urls) {
        texts.push_back(url.absoluteString());
    }
    return {std::string(fileNamesActionName), std::move(texts)};
}

std::optional<std::vector<std::string>> FileNamesPasteboard::fileNames() const {
    auto names = texts_;
    if (names) {
        for (std::string& name : *names) {
            const auto url = localFileURL(name);
            name = shownText(url ? url->path() : name);
        }
    }
    return names;
}

} // namespace tolvane::platform
