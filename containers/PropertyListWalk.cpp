#include "containers/PropertyListWalk.h"

#include "containers/ItemFlags.h"
#include "containers/TextRuns.h"
#include "platform/propertylist/KeyedArchive.h"
#include "platform/propertylist/PropertyList.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tolvane::containers {

using namespace platform;

namespace {

/// Appends a key as a step; one that could be taken for several is quoted.
void appendStep(std::string& where, std::string_view key) {
    const bool isPlain = !key.empty() && std::ranges::none_of(key, [](char c) {
        return c == '/' || c == '[' || c == ']' || c == '"';
    });
    const std::string_view quote = isPlain ? "" : "\"";
    where.append("/").append(quote).append(key).append(quote);
}

const Value* entryOf(const Value* value, std::string_view key) {
    const auto* const dictionary = value == nullptr ? nullptr : value->as<Dictionary>();
    return dictionary == nullptr ? nullptr : dictionary->find(key);
}

std::optional<std::string> textOf(const Dictionary& dictionary, std::string_view key) {
    const Value* const value = dictionary.find(key);
    if (value == nullptr) {
        return std::nullopt;
    }
    if (const auto* const text = value->as<std::string>()) {
        return *text;
    }
    return std::nullopt;
}

/// What a dictionary says of the item whose bookmark lies in it.
void addLabels(Label& label, const Dictionary& item) {
    for (const std::string_view key : {"Name", "name", "file-label", "label"}) {
        if (!label.name) {
            label.name = textOf(item, key);
        }
    }
    for (const std::string_view key : {"_CFURLString", "URL", "url", "DownloadEntryURL"}) {
        if (!label.neighbour) {
            label.neighbour = textOf(item, key);
        }
    }
    if (const Value* const fileData = item.find("file-data"); fileData != nullptr && !label.neighbour) {
        if (const auto* const dictionary = fileData->as<Dictionary>()) {
            label.neighbour = textOf(*dictionary, "_CFURLString");
        }
    }
}

bool isLikeNestedList(std::span<const std::byte> bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return text.starts_with("bplist") || isLikeXmlList(text);
}

class Walk {
public:
    /// `listKind` is the kind of the list around, if that is known.
    explicit Walk(Collector& collector, std::string_view listKind = {})
        : collector_(collector)
        , listKind_(listKind) {}

    std::string_view list(std::span<const std::byte> bytes, const std::string& where, unsigned level) {
        auto read = readPropertyList(bytes);
        if (!read) {
            collector_.complain(
                (where.empty() ? "The property list" : "The property list at " + where)
                + " cannot be read: expected " + read.error().expected + " at byte "
                + std::to_string(read.error().offset) + ".");
            return {};
        }
        auto objects = unarchivedObjects(read->value);
        const Value root = objects ? Value(std::move(objects->top)) : std::move(read->value);
        if (objects && objects->leftOut > 0) {
            collector_.complain(
                "Objects of an archive were left out, since it is nested or shared too much.");
        }
        level_ = level;
        const std::string_view kind = kindOf(root, objects.has_value());
        if (kind != "keyedArchive" && kind != "propertyList") {
            listKind_ = kind;
        }
        where_ = where;
        visit(root);
        return kind;
    }

private:
    // The depth of lists is limited by those that read them.
    void visit(const Value& value) {
        if (collector_.isFull()) {
            return;
        }
        if (const auto* const data = value.as<Data>()) {
            visitData(*data);
        } else if (const auto* const text = value.as<std::string>()) {
            collectFromText(*text, where_, collector_);
        } else if (const auto* const array = value.as<Array>()) {
            const auto above = std::exchange(items_, {});
            for (std::size_t i = 0; i < array->size(); ++i) {
                const std::size_t length = where_.size();
                where_.append("[").append(std::to_string(i)).append("]");
                visit((*array)[i]);
                where_.resize(length);
            }
            items_ = above;
        } else if (const auto* const dictionary = value.as<Dictionary>()) {
            items_.push_back(dictionary);
            for (const auto& [key, element] : *dictionary) {
                const std::size_t length = where_.size();
                appendStep(where_, key);
                visit(element);
                where_.resize(length);
            }
            items_.pop_back();
        }
    }

    void visitData(const Data& data) {
        // Labels may be long, so other data get none.
        if (isLikeFinding(data)) {
            collector_.add(data, where_, label());
            return;
        }
        if (!isLikeNestedList(data)) {
            return;
        }
        if (level_ == deepestNestedList) {
            collector_.complain("The property list at " + where_ + " lies too deep and was left out.");
            return;
        }
        Walk(collector_, listKind_).list(data, where_, level_ + 1);
    }

    /// From the dictionaries around, the nearest first, up to the element of an array.
    Label label() const {
        constexpr std::size_t mostLevels = 3;
        Label label;
        for (std::size_t i = 0; i < std::min(mostLevels, items_.size()); ++i) {
            addLabels(label, *items_[items_.size() - 1 - i]);
        }
        label.flags = itemFlags(listKind_, std::span(items_).last(std::min(mostLevels, items_.size())));
        return label;
    }

    static std::string_view kindOf(const Value& root, bool isArchive) {
        const Value* const archived = entryOf(&root, "root");
        if (isArchive) {
            if (entryOf(archived, "items") != nullptr) {
                return "sharedFileList";
            }
            const bool isBackground =
                entryOf(archived, "backgroundItems") != nullptr || entryOf(&root, "store") != nullptr;
            return isBackground ? "backgroundItems" : "keyedArchive";
        }
        struct Known {
            std::string_view key;
            std::string_view kind;
        };
        static constexpr std::array known{
            Known{"persistent-apps", "dock"},
            Known{"persistent-others", "dock"},
            Known{"FXRecentFolders", "finder"},
            Known{"SessionItems", "loginItems"},
            Known{"AutoLaunchedApplicationDictionary", "loginItems"},
            Known{"RecentDocuments", "recentItems"},
            Known{"RecentApplications", "recentItems"},
            Known{"systemitems", "sidebarLists"},
            Known{"DownloadHistory", "downloads"},
            Known{"folderActions", "folderActions"},
            Known{"BackupAlias", "timeMachine"},
            Known{"Destinations", "timeMachine"}};
        for (const auto& [key, kind] : known) {
            if (entryOf(&root, key) != nullptr) {
                return kind;
            }
        }
        const auto* const dictionary = root.as<Dictionary>();
        const bool isLocation = dictionary != nullptr
                                && ((dictionary->size() == 1 && textOf(*dictionary, "URL"))
                                    || textOf(*dictionary, "NSURLNameKey"));
        return isLocation ? "internetLocation" : "propertyList";
    }

    Collector& collector_;
    std::vector<const Dictionary*> items_; ///< The dictionaries around, since the last array.
    std::string where_;                    ///< The steps to the value that is visited.
    std::string_view listKind_;            ///< Empty where it is none that is known.
    unsigned level_ = 0;
};

/// The address, or the name of an item that is not downloaded, which is all that such a file has.
void collectLocation(std::span<const std::byte> bytes, Collector& collector) {
    const auto read = readPropertyList(bytes);
    const auto* const dictionary = read ? read->value.as<Dictionary>() : nullptr;
    if (dictionary == nullptr) {
        return;
    }
    Finding finding;
    finding.kind = FindingKind::url;
    finding.url = textOf(*dictionary, "URL");
    finding.name = textOf(*dictionary, "NSURLNameKey");
    finding.where = finding.url ? "/URL" : "/NSURLNameKey";
    collector.add(std::move(finding));
}

} // namespace

bool isLikeXmlList(std::string_view text) {
    constexpr std::size_t front = 1024;
    const std::string_view beginning = text.substr(0, front);
    const bool isXml = beginning.starts_with("<?xml") || beginning.starts_with("\xEF\xBB\xBF<?xml");
    return isXml && beginning.contains("<plist");
}

std::string_view collectFromPropertyList(
    std::span<const std::byte> bytes, const std::string& where, Collector& collector) {
    const std::string_view kind = Walk(collector).list(bytes, where, 0);
    if (kind == "internetLocation" && where.empty()) {
        collectLocation(bytes, collector);
    }
    return kind;
}

} // namespace tolvane::containers
