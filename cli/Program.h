#pragma once

#include "attributes/Explanation.h"
#include "cli/Output.h"
#include "details/ItemExplanations.h"
#include "inspect/SizeData.h"
#include "platform/services/Bookmarks.h"
#include "platform/services/ExtendedAttributeCalls.h"
#include "platform/services/FileContents.h"
#include "platform/services/NewFiles.h"
#include "platform/services/StatusFactSource.h"
#include "platform/services/Streams.h"
#include "platform/services/UserSession.h"
#include "platform/values/Error.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace tolvane::cli {

/// What the terminal program needs of the system. The referenced objects outlive the run. Where several
/// threads may work, the services are asked by several at a time.
struct ProgramSources {
    inspect::FileSources files;
    platform::InputStream& standardInput;
    platform::OutputStream& standardOutput;
    platform::OutputStream& standardError;
    std::function<platform::Result<std::string>()> currentFolder;
    std::function<platform::Result<std::unique_ptr<platform::InputStream>>(const std::string& path)>
        openForReading;
    const platform::Bookmarks& bookmarks;
    const platform::UserSession& session;
    const platform::FileContents& contents;
    /// How many threads may work on many names where no number is given; 0 is one for each processor.
    std::size_t usualJobs = 1;
    /// The names of accounts in attributes; without it they have none. Asked by several threads at a time.
    std::function<std::optional<std::string>(attributes::AccountKind kind, std::uint32_t number)>
        accountName = {};
    /// Facts next to attributes; without it there are none.
    const platform::StatusFactSource* facts = nullptr;
    /// The attributes of symbolic links themselves; without it only targets have some.
    const platform::ExtendedAttributeCalls* linkAttributes = nullptr;
    /// Opens a folder for the files that are extracted.
    std::function<platform::Result<std::unique_ptr<platform::NewFiles>>(const std::string& folder)>
        openFolderForNewFiles = {};
    /// The composed form of names, in which they are compared. Asked by several threads at a time.
    std::function<std::optional<std::string>(std::string_view text)> composedText = {};
};

/// What explaining attributes needs of these.
details::ExplanationSources explanationSources(const ProgramSources& sources);

/// Runs the terminal program with the arguments that follow its name.
ExitStatus runProgram(std::span<const std::string> arguments, const ProgramSources& sources);

} // namespace tolvane::cli
