#pragma once

#include "cli/ResolutionWitness.h"
#include "platform/Bookmarks.h"
#include "platform/DocumentController.h"
#include "platform/Error.h"
#include "platform/Storyboard.h"
#include "platform/Streams.h"
#include "platform/UserSession.h"

#include <functional>
#include <memory>
#include <string>

namespace tolvane::cli {

/// What the terminal program needs of the system. The referenced objects outlive the run.
struct ProgramSources {
    platform::DocumentController& documents;
    platform::InputStream& standardInput;
    platform::OutputStream& standardOutput;
    platform::OutputStream& standardError;
    std::function<platform::Result<std::string>()> currentFolder;
    std::function<platform::Result<std::unique_ptr<platform::InputStream>>(const std::string& path)>
        openForReading;
    const platform::Bookmarks& bookmarks;
    const platform::UserSession& session;
    /// Has the scene "Bookmark Resolver Window", whose windows ask the witness.
    const platform::Storyboard& storyboard;
    const ResolutionWitness& witness;
};

} // namespace tolvane::cli
