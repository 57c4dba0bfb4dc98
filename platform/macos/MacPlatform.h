#pragma once

#include "platform/macos/bookmarks/MacBookmarks.h"
#include "platform/macos/facts/MacExtendedAttributeCalls.h"
#include "platform/macos/facts/MacFileManager.h"
#include "platform/macos/facts/MacURLResources.h"
#include "platform/macos/session/MacUserSession.h"
#include "platform/posix/PosixFileContents.h"
#include "platform/posix/PosixTextFiles.h"
#include "platform/services/ExtendedAttributeCalls.h"
#include "platform/services/StatusFactSource.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// What macOS provides to the programs, together. Not yet run on one. Several
/// threads may use it at a time.
struct MacPlatform {
    MacPlatform() = default;
    MacPlatform(const MacPlatform&) = delete;
    MacPlatform& operator=(const MacPlatform&) = delete;
    ~MacPlatform() = default;

    /// Not answered yet.
    static const StatusFactSource* statusFactSource() { return nullptr; }
    static const ExtendedAttributeCalls* linkAttributeCalls() { return nullptr; }

    MacExtendedAttributeCalls extendedAttributes;
    MacFileManager fileManager;
    MacURLResources resources;
    MacBookmarks bookmarks;
    MacUserSession session;
    PosixTextFiles textFiles;
    MacProcessInfo processInfo;
    /// There is none yet, so that names past ASCII are not compared.
    static constexpr std::optional<std::string> (*composed)(std::string_view) = nullptr;
    std::shared_ptr<const PosixFileContents> fileContents = std::make_shared<const PosixFileContents>();
};

/// All of it. There is nothing to complain of.
inline MacPlatform systemPlatform(const std::function<void(const std::string& sentence)>& /*complain*/) {
    return {};
}

} // namespace tolvane::platform
