#include "inspect/SizeData.h"

#include "inspect/ExtendedAttributes.h"
#include "platform/values/FatalError.h"

namespace tolvane::inspect {

SizeData::SizeData(const platform::URL& url, const FileSources& sources) : url_(url) {
    gather(sources);
}

void SizeData::gather(const FileSources& sources) {
    static constexpr std::array<std::string_view, 2> keys{
        platform::NSURLFileSizeKey, platform::NSURLTotalFileSizeKey};
    auto resources = sources.resources.resourceValuesForKeys(url_, keys);
    if (!resources) {
        return;
    }
    const platform::URLResourceValues values(*std::move(resources));
    uTotalSize_ = values.totalFileSize().value_or(0);
    uDataSize_ = values.fileSize().value_or(0);

    const auto attributesSize = totalXattrSize(url_, sources.extendedAttributes);
    if (!attributesSize) {
        return;
    }
    uXattrSize_ = *attributesSize;

    auto attributes = sources.fileManager.attributesOfItemAtPath(url_.path());
    if (!attributes) {
        return;
    }
    const platform::Value* size = attributes->find(platform::NSFileSize);
    const std::optional<std::int64_t> bytes = size != nullptr ? size->exactInt64() : std::nullopt;
    if (!bytes) {
        platform::fatalError("the file manager's attributes hold no integer NSFileSize");
    }
    fmDataSize_ = *bytes;
    inode_ = *std::move(attributes);
}

} // namespace tolvane::inspect
