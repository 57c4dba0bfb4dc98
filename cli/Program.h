#pragma once

#include "cli/Complaint.h"
#include "cli/ProgramSources.h"

#include <span>
#include <string>

namespace tolvane::cli {

/// Runs the terminal program with the arguments that follow its name.
ExitStatus runProgram(std::span<const std::string> arguments, const ProgramSources& sources);

} // namespace tolvane::cli
