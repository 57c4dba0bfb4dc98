#include "cli/ItemExplanations.h"

#include "attributes/Companion.h"
#include "inspect/ExtendedAttributes.h"
#include "platform/services/FileManager.h"
#include "platform/values/Utf8.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

namespace tolvane::cli {

namespace {

using attributes::Questions;
using platform::Data;
using platform::Dictionary;
using platform::ItemKind;
using platform::Result;

std::optional<ItemKind> kindIn(const Dictionary& attributes) {
    const auto* const type = attributes.find(platform::NSFileType);
    const auto* const text = type != nullptr ? type->as<std::string>() : nullptr;
    if (text == nullptr || *text == platform::NSFileTypeSymbolicLink) {
        // The attributes of a link are its target's, whose kind is not known.
        return std::nullopt;
    }
    return *text == platform::NSFileTypeDirectory ? ItemKind::folder
           : *text == platform::NSFileTypeRegular ? ItemKind::regularFile
                                                  : ItemKind::unknown;
}

/// Reads each value by itself, after the file manager has left out all of them since one could not be read.
void explainOneByOne(
    const platform::URL& url,
    const Questions& questions,
    const ProgramSources& sources,
    ItemExplanations& result) {
    const std::optional<std::string> path = url.fileSystemRepresentation();
    const char* const representation = path ? path->c_str() : nullptr;
    const platform::ExtendedAttributeCalls& calls = sources.files.extendedAttributes;
    const auto names = inspect::xattrNames(representation, calls);
    if (!names) {
        if (names.error().code != ENOTSUP) {
            result.failures.push_back("the attributes: " + names.error().localizedDescription());
        }
        return;
    }
    for (const std::string& name : *names) {
        const auto size = inspect::xattrValueSize(representation, name, calls);
        Data value(size ? static_cast<std::size_t>(*size) : 0);
        const auto read = size && *size > 0 ? calls.getxattr(representation, name.c_str(), value) : 0;
        if (!size || !read) {
            const platform::Error error = size ? platform::posixError(read.error()) : size.error();
            result.failures.push_back(name + ": " + error.localizedDescription());
            continue;
        }
        value.resize(static_cast<std::size_t>(*read));
        result.attributes.push_back(attributes::explain(name, value, questions));
    }
}

Result<Data> contentOf(const std::string& path, const ProgramSources& sources) {
    const auto stream = sources.openForReading(path);
    if (!stream) {
        return std::unexpected(stream.error());
    }
    Data content;
    std::array<char, 65'536> buffer{};
    while (content.size() <= longestCompanion) {
        const Result<std::size_t> count = (*stream)->read(buffer);
        if (!count) {
            return std::unexpected(count.error());
        }
        if (*count == 0) {
            return content;
        }
        const auto bytes = std::as_bytes(std::span(buffer).first(*count));
        content.insert(content.end(), bytes.begin(), bytes.end());
    }
    return std::unexpected(platform::posixError(EFBIG));
}

/// Where a companion file of the item may be, or the item itself if its name is that of one.
std::vector<std::string> companionPaths(std::string_view path) {
    constexpr std::string_view prefix = "._";
    constexpr std::string_view folder = ".AppleDouble/";
    const std::size_t slash = path.rfind('/');
    const std::string parent(path.substr(0, slash + 1));
    const std::string_view name = path.substr(slash + 1);
    if (name.starts_with(prefix) || parent.ends_with("/.AppleDouble/")) {
        return {std::string(path)};
    }
    if (name.empty()) {
        return {};
    }
    return {
        parent + std::string(prefix) + std::string(name), parent + std::string(folder) + std::string(name)};
}

bool isRegular(const Dictionary& attributes) {
    const auto* const type = attributes.find(platform::NSFileType);
    const auto* const text = type != nullptr ? type->as<std::string>() : nullptr;
    return text != nullptr && *text == platform::NSFileTypeRegular;
}

void explainCompanionOf(
    const platform::URL& url,
    const Dictionary& item,
    const Questions& questions,
    const ProgramSources& sources,
    ItemExplanations& result) {
    const std::string ownPath = url.path();
    for (const std::string& path : companionPaths(ownPath)) {
        const bool isItem = path == ownPath;
        const auto beside =
            isItem ? Result<Dictionary>(item) : sources.files.fileManager.attributesOfItemAtPath(path);
        if (!beside || !isRegular(*beside)) {
            continue;
        }
        const Result<Data> content = contentOf(path, sources);
        if (!content && !isItem && content.error().code == ENOENT) {
            continue;
        }
        if (!content) {
            result.failures.push_back(
                platform::shownText(path) + ": " + content.error().localizedDescription());
            continue;
        }
        // What a companion file is about is not known from the file alone.
        auto companion =
            attributes::explainCompanion(*content, isItem ? Questions{questions.accountName, {}} : questions);
        if (!companion) {
            continue;
        }
        if (companion->damage) {
            result.failures.push_back(platform::shownText(path) + ": " + *companion->damage);
        }
        result.companion = CompanionExplanations{path, std::move(companion->attributes)};
        return;
    }
}

} // namespace

ItemExplanations explainItem(
    const platform::URL& url, const Dictionary& attributes, const ProgramSources& sources) {
    ItemExplanations result;
    const Questions questions{sources.accountName, kindIn(attributes)};
    const auto* const held = attributes.find(platform::NSFileExtendedAttributes);
    if (const auto* const values = held != nullptr ? held->as<Dictionary>() : nullptr) {
        for (const Dictionary::Entry& entry : *values) {
            if (const auto* const bytes = entry.value.as<Data>()) {
                result.attributes.push_back(attributes::explain(entry.key, *bytes, questions));
            }
        }
    } else {
        explainOneByOne(url, questions, sources, result);
    }
    explainCompanionOf(url, attributes, questions, sources, result);
    return result;
}

} // namespace tolvane::cli
