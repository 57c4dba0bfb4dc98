#pragma once

#include "platform/linux/bookmarks/LinuxBookmarks.h"
#include "platform/linux/files/LinuxExtendedAttributeCalls.h"
#include "platform/linux/files/LinuxFileManager.h"
#include "platform/linux/files/LinuxStatusFactSource.h"
#include "platform/linux/files/LinuxURLResources.h"
#include "platform/linux/session/LinuxProcessInfo.h"
#include "platform/linux/session/LinuxUserSession.h"
#include "platform/linux/types/ComposedText.h"
#include "platform/linux/types/TypeTable.h"
#include "platform/posix/PosixFileContents.h"
#include "platform/posix/PosixTextFiles.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace tolvane::platform {

/// The table of types that is compiled in. When it cannot be parsed, the program goes on with a table without
/// declarations, and one complaint says why.
TypeTable declaredTypes(const std::function<void(const std::string& sentence)>& complain);

/// What Linux provides to the programs, together.
///
/// Members are made in this order and destroyed in the reverse one, so each may refer to those above it. They
/// refer to each other by address; the object stays where it was made. Several threads may use it at a time.
struct LinuxPlatform {
    explicit LinuxPlatform(TypeTable types) : typeTable(std::move(types)) {}
    LinuxPlatform(const LinuxPlatform&) = delete;
    LinuxPlatform& operator=(const LinuxPlatform&) = delete;
    ~LinuxPlatform() = default;

    const StatusFactSource* statusFactSource() const { return &statusFacts; }
    const ExtendedAttributeCalls* linkAttributeCalls() const { return &linkAttributes; }

    TypeTable typeTable;
    LinuxExtendedAttributeCalls extendedAttributes;
    LinuxLinkAttributeCalls linkAttributes;
    LinuxStatusFactSource statusFacts;
    LinuxFileManager fileManager{extendedAttributes};
    LinuxURLResources resources{typeTable};
    LinuxBookmarks bookmarks;
    LinuxUserSession session;
    PosixTextFiles textFiles;
    LinuxProcessInfo processInfo;
    /// The composed form of names, in which they are compared.
    static constexpr auto composed = &composedText;
    std::shared_ptr<const PosixFileContents> fileContents = std::make_shared<const PosixFileContents>();
};

/// All of it, with the declared types.
inline LinuxPlatform systemPlatform(const std::function<void(const std::string& sentence)>& complain) {
    return LinuxPlatform(declaredTypes(complain));
}

} // namespace tolvane::platform
