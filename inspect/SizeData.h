#pragma once

#include "platform/ExtendedAttributeCalls.h"
#include "platform/FileManager.h"
#include "platform/URL.h"
#include "platform/URLResources.h"
#include "platform/Value.h"

#include <cstdint>

namespace tolvane::inspect {

/// What measuring a file needs of the platform. The referenced objects outlive whoever keeps this.
struct FileSources {
    const platform::URLResources& resources;
    const platform::FileManager& fileManager;
    const platform::ExtendedAttributeCalls& extendedAttributes;
};

/// The size record of one opened file, filled once at construction and never changed.
///
/// It brings together what the platform says about a file's size in different ways, so that they can be
/// compared, and the file manager's attribute dictionary. All sizes are bytes. What is not known reads 0, and
/// a dictionary that could not be had is empty: the record always comes into being and no failure is
/// reported.
class SizeData {
public:
    /// Measures the file: first the URL resource values, then the extended attributes, then the file manager.
    /// The first of the three that fails ends the measuring, so what comes after it keeps 0 or stays empty. A
    /// dictionary without an integer NSFileSize, and a sum of attribute sizes that overflows, are fatal
    /// errors.
    SizeData(const platform::URL& url, const FileSources& sources);
    SizeData() = delete;

    /// The file's URL exactly as it was given.
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
