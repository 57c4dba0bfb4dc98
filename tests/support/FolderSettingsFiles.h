/// Files of folder settings (".DS_Store"), written by code that has nothing in common with what reads them.
#pragma once

#include "platform/values/Value.h"

#include <string>
#include <vector>

namespace tolvane::tests {

struct WrittenSetting {
    std::string name; ///< ASCII.
    std::string code;
    std::string type;
    platform::Data value; ///< With the length where the type has one.
};

/// A setting of type "blob" with these bytes.
WrittenSetting blobSetting(std::string name, std::string code, const platform::Data& bytes);

/// A setting of type "ustr" with this ASCII text.
WrittenSetting textSetting(std::string name, std::string code, const std::string& text);

/// A file with the settings in this order: in one block or, if there are more than three, in two with the
/// second setting between them in a block above.
platform::Data folderSettingsFile(const std::vector<WrittenSetting>& settings);

} // namespace tolvane::tests
