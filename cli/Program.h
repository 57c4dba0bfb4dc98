#pragma once

#include "cli/ReportCommand.h"
#include "platform/DocumentController.h"
#include "platform/Error.h"
#include "platform/Streams.h"

#include <functional>
#include <memory>
#include <span>
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
};

/// Runs the terminal program with the arguments that follow its name.
ExitStatus runProgram(std::span<const std::string> arguments, const ProgramSources& sources);

} // namespace tolvane::cli
