#include "platform/bookmark/description/BookmarkProperties.h"

#include "platform/bookmark/description/BookmarkDescription.h"
#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/bookmark/format/BookmarkValues.h"
#include "platform/values/Utf8.h"

namespace tolvane::platform {

namespace {

/// A flag and its property's name. An inverse one means the opposite of its bit.
struct FlagName {
    std::uint64_t bit;
    std::string_view name;
    bool isInverse = false;
};

constexpr std::array fileFlagNames{
    FlagName{file_flag::regularFile, "NSURLIsRegularFileKey"},
    FlagName{file_flag::directory, "NSURLIsDirectoryKey"},
    FlagName{file_flag::symbolicLink, "NSURLIsSymbolicLinkKey"},
    FlagName{file_flag::volume, "NSURLIsVolumeKey"},
    FlagName{0x10, "NSURLIsPackageKey"},
    FlagName{0x20, "NSURLIsSystemImmutableKey"},
    FlagName{0x40, "NSURLIsUserImmutableKey"},
    FlagName{0x80, "NSURLIsHiddenKey"},
    FlagName{0x100, "NSURLHasHiddenExtensionKey"},
    FlagName{0x200, "NSURLIsApplicationKey"},
    FlagName{0x400, "_NSURLIsCompressedKey"},
    FlagName{0x800, "_NSURLCanSetHiddenExtensionKey"},
    FlagName{0x1000, "NSURLIsReadableKey"},
    FlagName{0x2000, "NSURLIsWritableKey"},
    FlagName{0x4000, "NSURLIsExecutableKey"},
    FlagName{0x8000, "NSURLIsAliasFileKey"},
    FlagName{0x1'0000, "NSURLIsMountTriggerKey"}};

/// The volume flags with known names.
constexpr std::array volumeFlagNames{
    FlagName{volume_flag::local, "NSURLVolumeIsLocalKey"},
    FlagName{volume_flag::automounted, "NSURLVolumeIsAutomountedKey"},
    FlagName{volume_flag::notBrowsable, "NSURLVolumeIsBrowsableKey", true},
    FlagName{volume_flag::readOnly, "NSURLVolumeIsReadOnlyKey"},
    FlagName{volume_flag::ejectable, "NSURLVolumeIsEjectableKey"},
    FlagName{volume_flag::removable, "NSURLVolumeIsRemovableKey"},
    FlagName{volume_flag::internal, "NSURLVolumeIsInternalKey"},
    FlagName{volume_flag::persistentIDs, "NSURLVolumeSupportsPersistentIDsKey"}};

/// Values that are copied under another name.
struct ValueName {
    std::uint32_t key;
    std::string_view name;
};

constexpr std::array valueNames{
    ValueName{bookmark_key::fileName, "NSURLNameKey"},
    ValueName{bookmark_key::creationDate, "NSURLCreationDateKey"},
    ValueName{bookmark_key::volumeName, "NSURLBookmarkOriginalVolumeNameKey"},
    ValueName{bookmark_key::volumeName, "NSURLVolumeNameKey"},
    ValueName{bookmark_key::volumeCreationDate, "NSURLVolumeCreationDateKey"},
    ValueName{bookmark_key::volumeCapacity, "NSURLVolumeTotalCapacityKey"},
    ValueName{bookmark_key::volumeURL, "NSURLVolumeURLKey"},
    ValueName{bookmark_key::volumeUUID, "NSURLVolumeUUIDStringKey"},
    ValueName{bookmark_key::volumeMountURL, "NSURLVolumeURLForRemountingKey"},
    ValueName{bookmark_key::fullPath, "_NSURLPathKey"},
    ValueName{bookmark_key::displayName, "NSURLLocalizedNameKey"},
    ValueName{bookmark_key::typeIdentifier, "NSURLTypeIdentifierKey"},
    ValueName{bookmark_key::isExecutable, "NSURLIsExecutableKey"}};

/// Collects entries; a later one replaces an earlier one of the same name.
class Properties {
public:
    explicit Properties(const BookmarkStructure& structure)
        : structure_(structure)
        , table_(structure.table(table_identifier::target))
        , items_(structure, table_) {}

    Dictionary take() {
        addFlags(items_.flags(bookmark_key::fileFlags), fileFlagNames);
        addFlags(items_.flags(bookmark_key::volumeFlags), volumeFlagNames);
        for (const ValueName& valueName : valueNames) {
            if (std::optional<Value> value = items_.value(valueName.key)) {
                add(valueName.name, std::move(*value));
            }
        }
        addPath();
        addScope();
        addNamed();
        return Dictionary::fromEntries(std::move(entries_));
    }

private:
    void add(std::string_view name, Value value) {
        entries_.push_back({std::string(name), std::move(value)});
    }

    void addFlags(const std::optional<BookmarkFlags>& flags, std::span<const FlagName> names) {
        if (!flags) {
            return;
        }
        for (const FlagName& name : names) {
            if ((flags->valid & name.bit) != 0) {
                add(name.name, ((flags->values & name.bit) != 0) != name.isInverse);
            }
        }
    }

    void addPath() {
        if (const auto components = items_.strings(bookmark_key::pathComponents)) {
            addComponents(*components);
        } else if (std::optional<std::string> url = items_.urlOrString(bookmark_key::targetURL)) {
            add("_NSURLBookmarkURLStringKey", *std::move(url));
        } else if (const auto record = aliasRecordIn(structure_)) {
            addAlias(contentsOfAliasRecord(*record));
        }
    }

    void addComponents(const std::vector<std::string>& components) {
        Array array;
        std::string path;
        for (const std::string& component : components) {
            array.emplace_back(component);
            path.append("/").append(component);
        }
        if (!components.empty()) {
            add("NSURLNameKey", components.back());
        }
        add("NSURLBookmarkOriginalRelativePathComponentsArrayKey", std::move(array));
        add("NSURLBookmarkOriginalRelativePathKey", path.substr(path.empty() ? 0 : 1));
        const std::string fullPath = path.empty() ? "/" : path;
        add("_NSURLPathKey", fullPath);
        add("_NSURLBookmarkURLStringKey", URL::fileURLWithPath(fullPath).absoluteString());
    }

    /// An alias record has dates in UTC only here; those in local time are in the detailed description.
    void addAlias(const BookmarkContents& contents) {
        if (contents.volume.path) {
            const std::string& path = *contents.volume.path;
            add("NSURLVolumeURLKey", URL::fileURLWithPath(path == "/" ? path : path + "/").absoluteString());
        }
        if (contents.pathComponents && contents.volume.path) {
            std::vector<std::string> components;
            std::ranges::transform(*contents.pathComponents, std::back_inserter(components), shownText);
            addComponents(components);
        }
        addText("NSURLNameKey", contents.displayName);
        addText("NSURLBookmarkOriginalVolumeNameKey", contents.volume.name);
        addText("NSURLVolumeNameKey", contents.volume.name);
        addDate("NSURLCreationDateKey", contents.creationDate);
        addDate("NSURLVolumeCreationDateKey", contents.volume.creationDate);
        addFlags(contents.fileFlags, fileFlagNames);
    }

    void addText(std::string_view name, const std::optional<std::string>& text) {
        if (text) {
            add(name, *text);
        }
    }

    void addDate(std::string_view name, const std::optional<Date>& date) {
        if (date) {
            add(name, *date);
        }
    }

    void addScope() {
        if (const std::optional<std::int64_t> options = items_.integer(bookmark_key::creationOptions)) {
            const auto bits = static_cast<std::uint32_t>(*options);
            add("_NSURLBookmarkIsRevocableKey", (bits & bookmark_option::revocableSecurityScope) != 0);
        }
        const BookmarkHeader& header = structure_.header;
        if (header.hasSecurityScopeKey()) {
            add("_NSURLBookmarkSecurityScopeCryptoKeyKey",
                Data(header.securityScopeKey.begin(), header.securityScopeKey.end()));
        }
    }

    void addNamed() {
        if (table_ == nullptr) {
            return;
        }
        for (const BookmarkItem& item : table_->items) {
            const BookmarkRecord* const name =
                item.isNamed() ? structure_.record(item.nameOffset()) : nullptr;
            const BookmarkRecord* const value = structure_.record(item.valueOffset);
            if (name != nullptr && value != nullptr) {
                add(structure_.text(*name), bookmarkValue(structure_, *value));
            }
        }
    }

    const BookmarkStructure& structure_;
    const BookmarkTable* table_;
    BookmarkItems items_;
    std::vector<Dictionary::Entry> entries_;
};

} // namespace

Dictionary bookmarkProperties(const BookmarkStructure& structure) {
    return Properties(structure).take();
}

Dictionary storedProperties(const BookmarkStructure& structure, std::string_view key) {
    if (key == NSURLBookmarkAllPropertiesKey) {
        return {{std::string(key), bookmarkProperties(structure)}};
    }
    if (key == NSURLBookmarkDetailedDescription) {
        return {{std::string(key), bookmarkDetailedDescription(structure)}};
    }
    return {};
}

ReadProperties readStoredProperties(std::span<const std::byte> bookmarkData) {
    auto structure = readBookmarkOrAlias(bookmarkData);
    std::optional<Error> failure;
    if (!structure) {
        failure = cocoaError(NSFileReadCorruptFileError, structure.error().sentence());
    }
    const auto properties = [structure = std::move(structure)](std::string_view key) {
        return structure ? std::optional(storedProperties(*structure, key)) : std::nullopt;
    };
    return {properties, failure};
}

} // namespace tolvane::platform
