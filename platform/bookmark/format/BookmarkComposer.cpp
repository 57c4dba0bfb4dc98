#include "platform/bookmark/format/BookmarkComposer.h"

#include "platform/bookmark/format/BookmarkHeader.h"
#include "platform/bookmark/format/SectionComposer.h"
#include "platform/values/ByteCursor.h"

#include <functional>

namespace tolvane::platform {

namespace {

/// Writes the records of 'contents' in the platform's order and gathers the items of the tables.
class Composition {
public:
    Composition(const BookmarkContents& contents, std::size_t headerLength)
        : contents_(contents)
        , composer_(headerLength, expectedLength(contents)) {
        items_.reserve(usualItemCount);
    }

    /// Room for the header and the section.
    Data compose() {
        if (contents_.options != 0) {
            add(items_, bookmark_key::creationOptions, composer_.addInt32(contents_.options));
        }
        addTarget();
        addVolume(items_, contents_.volume);
        if (contents_.volume.wasBoot) {
            add(items_, bookmark_key::volumeWasBoot, composer_.addTrue());
        }
        const std::uint32_t rootTable = addRootVolume();
        addString(items_, bookmark_key::displayName, contents_.displayName);
        return composer_.take(composer_.addTable(table_identifier::target, rootTable, std::move(items_)));
    }

private:
    using Items = std::vector<BookmarkItem>;

    static constexpr std::size_t usualItemCount = 24;

    /// Enough for most: each component has a name, a number and two offsets.
    static std::size_t expectedLength(const BookmarkContents& contents) {
        constexpr std::size_t forTheRest = 1024;
        constexpr std::size_t besidesAName = 40;
        std::size_t length = forTheRest;
        if (contents.pathComponents) {
            for (const std::string& component : *contents.pathComponents) {
                length += besidesAName + component.size();
            }
        }
        return length;
    }

    static void add(Items& items, std::uint32_t key, std::uint32_t offset) {
        items.push_back({key, offset, 0});
    }

    /// Adds a fact, if it is known, as the record that `addRecord` of the composer makes of it.
    template <typename Fact, typename AddRecord>
    void add(Items& items, std::uint32_t key, const std::optional<Fact>& fact, AddRecord addRecord) {
        if (fact) {
            add(items, key, std::invoke(addRecord, composer_, *fact));
        }
    }

    void addString(Items& items, std::uint32_t key, const std::optional<std::string>& text) {
        add(items, key, text, &SectionComposer::addString);
    }

    void addInt32(Items& items, std::uint32_t key, const std::optional<std::int64_t>& number) {
        // A number that is too large for the usual width, as users' can be here, is read by its own width.
        add(items, key, number, [](SectionComposer& composer, std::int64_t known) {
            return std::in_range<std::int32_t>(known) ? composer.addInt32(static_cast<std::uint32_t>(known))
                                                      : composer.addInt64(known);
        });
    }

    void addTarget() {
        add(items_, bookmark_key::targetURL, contents_.url, &SectionComposer::addURL);
        addPath();
        addString(items_, bookmark_key::fileName, contents_.fileName);
        add(items_, bookmark_key::creationDate, contents_.creationDate, &SectionComposer::addDate);
        add(items_, bookmark_key::fileFlags, contents_.fileFlags, &SectionComposer::addFlags);
        if (contents_.createdWithRelativeURL) {
            add(items_, bookmark_key::createdWithRelativeURL,
                *contents_.createdWithRelativeURL ? composer_.addTrue() : composer_.addFalse());
        }
        addInt32(items_, bookmark_key::relativeDirsUp, contents_.relativeDirsUp);
        addInt32(items_, bookmark_key::relativeDirsDown, contents_.relativeDirsDown);
        if (contents_.wasFileIDFormat) {
            add(items_, bookmark_key::wasFileIDFormat, composer_.addTrue());
        }
        add(items_, bookmark_key::componentsBelowHome, contents_.componentsBelowHome,
            &SectionComposer::addInt64);
        addString(items_, bookmark_key::userName, contents_.userName);
        addInt32(items_, bookmark_key::userID, contents_.userID);
    }

    void addPath() {
        std::vector<std::uint32_t> offsets;
        if (contents_.pathComponents) {
            offsets.reserve(contents_.pathComponents->size());
            for (const std::string& component : *contents_.pathComponents) {
                offsets.push_back(composer_.addString(component));
            }
            add(items_, bookmark_key::pathComponents, composer_.addArray(offsets));
        }
        if (contents_.fileIDs && !contents_.fileIDs->empty()) {
            offsets.clear();
            for (const std::optional<std::int64_t>& number : *contents_.fileIDs) {
                offsets.push_back(number ? composer_.addInt64(*number) : composer_.addNull());
            }
            add(items_, bookmark_key::fileIDs, composer_.addArray(offsets));
        }
    }

    void addVolume(Items& items, const BookmarkVolume& volume) {
        add(items, bookmark_key::volumeURL, volume.url, &SectionComposer::addURL);
        addString(items, bookmark_key::volumeName, volume.name);
        add(items, bookmark_key::volumeCapacity, volume.capacity, &SectionComposer::addInt64);
        add(items, bookmark_key::volumeCreationDate, volume.creationDate, &SectionComposer::addDate);
        addString(items, bookmark_key::volumeUUID, volume.uuid);
        add(items, bookmark_key::volumeFlags, volume.flags, &SectionComposer::addFlags);
        addString(items, bookmark_key::volumePath, volume.path);
        add(items, bookmark_key::volumeMountURL, volume.mountURL, &SectionComposer::addURL);
    }

    std::uint32_t addTable(std::uint32_t identifier, std::uint32_t next, const BookmarkVolume& volume) {
        Items items;
        addVolume(items, volume);
        return composer_.addTable(identifier, next, std::move(items));
    }

    /// Returns the offset of the first of their tables, or 0. The last comes first: each refers to the next.
    std::uint32_t addVolumesBetween() {
        const std::vector<BookmarkVolume>& volumes = contents_.volumesBetween;
        std::uint32_t table = 0;
        for (std::size_t i = volumes.size(); i > 0; --i) {
            const auto identifier = table_identifier::firstVolumeBetween + static_cast<std::uint32_t>(i - 1);
            table = addTable(identifier, table, volumes[i - 1]);
        }
        return table;
    }

    /// Returns the offset of the root volume's table, or 0 without facts about it.
    std::uint32_t addRootVolume() {
        std::uint32_t table = 0;
        if (contents_.rootVolume) {
            table = addTable(table_identifier::rootVolume, addVolumesBetween(), *contents_.rootVolume);
        }
        if (!contents_.volumeDepths.empty()) {
            std::vector<std::uint32_t> offsets;
            offsets.reserve(contents_.volumeDepths.size());
            for (const std::uint32_t depth : contents_.volumeDepths) {
                offsets.push_back(composer_.addInt32(depth));
            }
            add(items_, bookmark_key::volumeDepths, composer_.addArray(offsets));
        }
        return table;
    }

    const BookmarkContents& contents_;
    SectionComposer composer_;
    Items items_;
};

std::expected<Data, BookmarkRefusal> composed(
    const BookmarkContents& contents, const BookmarkHeader& header) {
    if (const std::optional<BookmarkRefusal> refusal = refusalOfContents(contents)) {
        return std::unexpected(*refusal);
    }
    Data bytes = Composition(contents, header.size).compose();
    Data front;
    appendBookmarkHeader(front, header, bytes.size() - header.size);
    std::ranges::copy(front, bytes.begin());
    return bytes;
}

} // namespace

std::expected<Data, BookmarkRefusal> composeBookmark(const BookmarkContents& contents) {
    return composed(contents, {});
}

std::expected<Data, BookmarkRefusal> composeAliasFile(const BookmarkContents& contents, const Date& written) {
    return composed(contents, aliasFileHeader(written));
}

} // namespace tolvane::platform
