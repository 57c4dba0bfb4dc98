#include "details/ItemExplanations.h"

#include "attributes/Companion.h"
#include "inspect/ExtendedAttributes.h"
#include "platform/services/FileManager.h"
#include "platform/values/Utf8.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

namespace tolvane::details {

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

/// Reads each value by itself.
void readOneByOne(
    const std::string& path, const platform::ExtendedAttributeCalls& calls, StoredAttributes& result) {
    const auto names = inspect::xattrNames(path.c_str(), calls);
    if (!names) {
        if (names.error().code != ENOTSUP) {
            result.failures.push_back("the attributes: " + names.error().localizedDescription());
        }
        return;
    }
    for (const std::string& name : *names) {
        const auto size = inspect::xattrValueSize(path.c_str(), name, calls);
        Data value(size ? static_cast<std::size_t>(*size) : 0);
        const auto read = size && *size > 0 ? calls.getxattr(path.c_str(), name.c_str(), value) : 0;
        if (!size || !read) {
            const platform::Error error = size ? platform::posixError(read.error()) : size.error();
            result.failures.push_back(name + ": " + error.localizedDescription());
            continue;
        }
        value.resize(static_cast<std::size_t>(*read));
        result.attributes.push_back({name, std::move(value)});
    }
}

/// Whether the item is a link with a target that cannot be reached.
bool isDanglingLink(
    const std::string& path, const Dictionary& attributes, const ExplanationSources& sources) {
    const auto* const type = attributes.find(platform::NSFileType);
    const auto* const text = type != nullptr ? type->as<std::string>() : nullptr;
    return text != nullptr && *text == platform::NSFileTypeSymbolicLink
           && !sources.contents.lookAtTarget(path);
}

Result<Data> contentOf(const std::string& path, const platform::FileContents& contents) {
    const auto file = contents.openForReading(path);
    if (!file) {
        return std::unexpected(platform::posixError(file.error().value()));
    }
    Data content;
    std::array<std::byte, 65'536> buffer{};
    while (true) {
        const auto count = (*file)->read(content.size(), buffer);
        if (!count) {
            return std::unexpected(platform::posixError(count.error().value()));
        }
        content.insert(content.end(), buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(*count));
        if (content.size() > longestCompanion) {
            return std::unexpected(platform::posixError(EFBIG));
        }
        if (*count < buffer.size()) {
            return content;
        }
    }
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

} // namespace

StoredAttributes storedAttributes(
    const platform::URL& url, const Dictionary& attributes, const ExplanationSources& sources) {
    StoredAttributes result;
    const auto* const held = attributes.find(platform::NSFileExtendedAttributes);
    if (const auto* const values = held != nullptr ? held->as<Dictionary>() : nullptr) {
        for (const Dictionary::Entry& entry : *values) {
            if (const auto* const bytes = entry.value.as<Data>()) {
                result.attributes.push_back({entry.key, *bytes});
            }
        }
        return result;
    }
    const std::string path = url.path();
    result.areOfLink = sources.linkAttributes != nullptr && isDanglingLink(path, attributes, sources);
    readOneByOne(path, result.areOfLink ? *sources.linkAttributes : sources.files.extendedAttributes, result);
    return result;
}

Questions questionsAbout(const Dictionary& attributes, const ExplanationSources& sources) {
    return {sources.accountName, kindIn(attributes)};
}

std::optional<attributes::StatusFactsInWords> explainFactsOf(
    const platform::URL& url, const StoredAttributes& stored, const ExplanationSources& sources) {
    const auto facts = sources.facts != nullptr
                           ? sources.facts->factsOfItemAtPath(url.path())
                           : Result<platform::StatusFacts>(std::unexpected(platform::posixError(ENOTSUP)));
    if (!facts) {
        return std::nullopt;
    }
    const bool hasList = std::ranges::any_of(stored.attributes, [](const StoredAttribute& attribute) {
        return attribute.name == "system.posix_acl_access";
    });
    return attributes::explainFacts(*facts, hasList, {sources.accountName, {}});
}

std::optional<StoredCompanion> storedCompanion(
    const platform::URL& url,
    const Dictionary& attributes,
    const ExplanationSources& sources,
    std::vector<std::string>& failures) {
    const std::string ownPath = url.path();
    for (const std::string& path : companionPaths(ownPath)) {
        const bool isItem = path == ownPath;
        const auto beside =
            isItem ? Result<Dictionary>(attributes) : sources.files.fileManager.attributesOfItemAtPath(path);
        if (!beside || !isRegular(*beside)) {
            continue;
        }
        const Result<Data> content = contentOf(path, sources.contents);
        if (!content && !isItem && content.error().code == ENOENT) {
            continue;
        }
        if (!content) {
            failures.push_back(platform::shownText(path) + ": " + content.error().localizedDescription());
            continue;
        }
        const auto companion = attributes::companionAttributes(*content);
        if (!companion) {
            continue;
        }
        if (companion->damage) {
            failures.push_back(platform::shownText(path) + ": " + *companion->damage);
        }
        StoredCompanion result{path, {}, questionsAbout(attributes, sources)};
        if (isItem) {
            // What a companion file is about is not known from the file alone.
            result.questions.itemKind.reset();
        }
        for (const attributes::CompanionAttribute& attribute : companion->attributes) {
            result.attributes.push_back({attribute.name, {attribute.value.begin(), attribute.value.end()}});
        }
        return result;
    }
    return std::nullopt;
}

ItemExplanations explainItem(
    const platform::URL& url, const Dictionary& attributes, const ExplanationSources& sources) {
    ItemExplanations result;
    StoredAttributes stored = storedAttributes(url, attributes, sources);
    const Questions questions = questionsAbout(attributes, sources);
    result.facts = explainFactsOf(url, stored, sources);
    result.areOfLink = stored.areOfLink;
    for (const StoredAttribute& attribute : stored.attributes) {
        result.attributes.push_back(attributes::explain(attribute.name, attribute.value, questions));
        if (auto checksum = attributes::storedChecksum(attribute.name, attribute.value)) {
            result.checksums.push_back(*std::move(checksum));
        }
    }
    result.failures = std::move(stored.failures);
    if (const auto companion = storedCompanion(url, attributes, sources, result.failures)) {
        result.companion.emplace(companion->path);
        for (const StoredAttribute& attribute : companion->attributes) {
            result.companion->attributes.push_back(
                attributes::explain(attribute.name, attribute.value, companion->questions));
        }
    }
    return result;
}

void verifyChecksums(
    ItemExplanations& explanations,
    const std::string& path,
    const platform::FileContents& contents,
    const verification::Progress& progress) {
    explanations.verified = verification::verifyChecksums(explanations.checksums, path, contents, progress);
    for (const verification::Verified& verified : *explanations.verified) {
        if (verified.fit != verification::Fit::fits) {
            explanations.failures.push_back(verification::sentenceAbout(verified));
        }
    }
}

} // namespace tolvane::details
