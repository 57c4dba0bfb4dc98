// Parses bytes as a URL, as a path, and as a name in a folder.
#include "fuzz/Fuzz.h"
#include "platform/values/URL.h"

#include <algorithm>
#include <string>

namespace {

using namespace tolvane;

void checkText(std::string_view text) {
    const auto url = platform::URL::fromText(text);
    if (url) {
        fuzz::require(url->absoluteString() == text, "a URL keeps its text");
        fuzz::require(url->path().size() <= text.size(), "a path is no longer than its URL");
        const auto bytes = url->fileSystemRepresentation();
        fuzz::require(
            !bytes || (url->isFileURL() && *bytes == url->path() && !bytes->contains('\0')),
            "only the whole path of a file goes to the system");
    }
    if (const auto file = platform::localFileURL(text)) {
        fuzz::require(url && file->path() == url->path(), "a local file has the path of its URL");
        fuzz::require(file->path().starts_with('/'), "a local file has an absolute path");
        fuzz::require(platform::localFileURL(file->absoluteString()) == file, "one path has one URL");
    }
}

void checkPath(const std::string& path) {
    const platform::URL url = platform::URL::fileURLWithPath(path);
    fuzz::require(url.path() == path, "a path keeps every byte");
    fuzz::require(url.isFileURL(), "a path makes a file URL");
    fuzz::require(
        std::ranges::all_of(url.absoluteString(), [](char c) { return c > ' ' && c < '\x7F'; }),
        "the text of a URL is printable ASCII");
    fuzz::require(platform::URL::fromText(url.absoluteString()) == url, "the text of a URL is a URL");
    const bool canBeNamed = !path.contains('\0');
    fuzz::require(
        url.fileSystemRepresentation().has_value() == canBeNamed, "only a NUL keeps from the system");
    fuzz::require((platform::localFileURL(url.absoluteString()) == url) == canBeNamed, "a path is local");
    const std::string last = url.lastPathComponent();
    fuzz::require(!last.empty() && (last == "/" || !last.contains('/')), "the last component is one");
    fuzz::require(path.contains(last), "the last component is of the path");
}

void checkName(std::string_view name, const std::string& folder) {
    const std::string path = platform::absolutePath(name, folder);
    fuzz::require(path.empty() == name.empty(), "only an empty name names nothing");
    if (name.empty()) {
        return;
    }
    fuzz::require(path.starts_with('/'), "a name has an absolute path");
    fuzz::require(!path.contains("//") && !path.contains("/./"), "nothing that means nothing stays");
    fuzz::require(platform::absolutePath(path, "/other") == path, "a path is its own path");
    const bool asksForFolder = name.ends_with('/') || name.ends_with("/.");
    fuzz::require(!asksForFolder || path.ends_with('/'), "asking for a folder goes on");
    checkPath(path);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text = fuzz::textOf(data, size);
    checkText(text);
    checkText("file://" + std::string(text));
    checkPath("/" + std::string(text));
    const std::string folder = "/" + std::string(fuzz::takeUntilNul(text));
    checkName(text, folder);
    checkName(folder, "/");
    return 0;
}
