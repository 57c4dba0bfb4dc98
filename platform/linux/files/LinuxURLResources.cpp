#include "platform/linux/files/LinuxURLResources.h"

#include "platform/linux/files/ForkAttributes.h"
#include "platform/linux/files/ItemStatus.h"
#include "platform/linux/types/TypeIdentifier.h"
#include "platform/values/FatalError.h"

#include <cerrno>
#include <sys/stat.h>

namespace tolvane::platform {

namespace {

/// The values of one item, made from one look at it.
class ItemValues {
public:
    ItemValues(const URL& url, std::string path, const ItemStatus& status, const TypeTable& typeTable)
        : url_(url)
        , path_(std::move(path))
        , status_(status)
        , kind_(kindOfMode(status.mode))
        , typeTable_(typeTable) {}

    std::optional<Value> value(std::string_view key) {
        if (key == NSURLFileSizeKey) {
            return hasSize() ? std::optional<Value>(dataSize()) : std::nullopt;
        }
        if (key == NSURLTotalFileSizeKey) {
            return totalSize();
        }
        if (key == NSURLFileResourceIdentifierKey) {
            return resourceIdentifier(status_);
        }
        if (key == NSURLCreationDateKey) {
            return status_.creationDate;
        }
        if (key == NSURLAttributeModificationDateKey) {
            return status_.changeDate;
        }
        if (key == NSURLTypeIdentifierKey) {
            return type();
        }
        return std::nullopt;
    }

private:
    bool hasSize() const { return kind_ == ItemKind::regularFile || kind_ == ItemKind::symbolicLink; }

    std::int64_t dataSize() const { return static_cast<std::int64_t>(status_.size); }

    std::optional<Value> totalSize() {
        if (!hasSize()) {
            return std::nullopt;
        }
        const char* fork = forkAttributes().resourceFork;
        if (fork == nullptr) {
            return dataSize();
        }
        // A fork that is gone by now, or may not be measured, adds nothing.
        const auto forkSize = attributeSize(path_, fork).value_or(0);
        return checkedAdd(dataSize(), forkSize, "the size of all forks");
    }

    std::optional<Value> type() {
        if (kind_ == ItemKind::unknown) {
            return std::nullopt;
        }
        const auto name = url_.lastPathComponent();
        ItemFacts facts{kind_, false, (status_.mode & (S_IXUSR | S_IXGRP | S_IXOTH)) != 0, name, {}};
        // The root is a volume's also where it is a folder of one, moved there by chroot.
        facts.isVolumeRoot = kind_ == ItemKind::folder && (name == "/" || isMountRoot(path_, status_));
        std::optional<FinderInfo> finderInfo;
        if (kind_ == ItemKind::regularFile || kind_ == ItemKind::folder) {
            if (const char* attribute = forkAttributes().finderInfo) {
                finderInfo = readFinderInfo(path_, attribute);
            }
        }
        if (finderInfo) {
            facts.finderInfo = *finderInfo;
        }
        return typeIdentifier(facts, typeTable_);
    }

    /// Listed when first needed, and once for all values.
    const ForkAttributes& forkAttributes() {
        if (!forkAttributes_) {
            forkAttributes_ = forkAttributesOfItem(path_);
        }
        return *forkAttributes_;
    }

    const URL& url_;
    std::string path_;
    const ItemStatus& status_;
    ItemKind kind_;
    const TypeTable& typeTable_;
    std::optional<ForkAttributes> forkAttributes_;
};

} // namespace

Result<Dictionary> LinuxURLResources::resourceValuesForKeys(
    const URL& url, std::span<const std::string_view> keys) const {
    Dictionary values;
    values.reserve(keys.size());
    bool looksAtItem = false;
    for (const auto key : keys) {
        if (const Value* kept = url.keptResourceValue(key)) {
            values.set(key, *kept);
        } else {
            looksAtItem = true;
        }
    }
    if (!looksAtItem) {
        return values;
    }
    auto path = url.fileSystemRepresentation();
    if (!path) {
        return std::unexpected(posixError(EINVAL));
    }
    const auto status = statusOfItem(*path);
    if (!status) {
        return std::unexpected(status.error());
    }
    ItemValues item(url, *std::move(path), *status, typeTable_);
    for (const auto key : keys) {
        if (values.find(key) == nullptr) {
            if (auto value = item.value(key)) {
                values.set(key, *std::move(value));
            }
        }
    }
    return values;
}

} // namespace tolvane::platform
