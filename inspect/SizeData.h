#pragma once

#include "platform/services/ExtendedAttributeCalls.h"
#include "platform/services/FileManager.h"
#include "platform/services/URLResources.h"
#include "platform/values/URL.h"
#include "platform/values/Value.h"

#include <cstdint>

namespace tolvane::inspect {

/// The services that measuring a file needs. The referenced objects outlive this.
struct FileSources {
    const platform::URLResources& resources;
    const platform::FileManager& fileManager;
    const platform::ExtendedAttributeCalls& extendedAttributes;
};

/// The size record of one opened file, filled at construction and never changed.
///
/// It contains the different sizes that the platform reports for a file, for comparison, and the file
/// manager's attribute dictionary. All sizes are in bytes. Unknown sizes are 0, and an unavailable dictionary
/// is empty; failures are not reported.
class SizeData {
public:
    /// Measures URL resource values, extended attributes, then attributes. After the first failure the rest
    /// stays 0 or empty. A dictionary without an integer NSFileSize and an overflow are fatal errors.
    SizeData(const platform::URL& url, const FileSources& sources);
    SizeData() = delete;

    /// The file's URL as given.
    const platform::URL& url() const { return url_; }
    /// The URL resource value "total file size": all forks.
    std::int64_t uTotalSize() const { return uTotalSize_; }
    /// The URL resource value "file size".
    std::int64_t uDataSize() const { return uDataSize_; }
    /// The sum of the sizes of the extended attributes' values; names are not counted.
    std::int64_t uXattrSize() const { return uXattrSize_; }
    /// The file manager's NSFileSize.
    std::int64_t fmDataSize() const { return fmDataSize_; }
    /// The file manager's whole attribute dictionary, in spite of its name.
    const platform::Dictionary& inode() const { return inode_; }

private:
    void gather(const FileSources& sources);

    platform::URL url_;
    std::int64_t uTotalSize_ = 0;
    std::int64_t uDataSize_ = 0;
    std::int64_t uXattrSize_ = 0;
    std::int64_t fmDataSize_ = 0;
    platform::Dictionary inode_;
};

} // namespace tolvane::inspect
