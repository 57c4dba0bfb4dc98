#pragma once

#include "cli/NameWorkers.h"
#include "cli/Names.h"
#include "cli/Output.h"
#include "cli/Program.h"
#include "platform/values/Error.h"
#include "platform/values/URL.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tolvane::cli {

/// Gathers the details of each named item and prints them.
class ReportCommand {
public:
    /// How a report is printed. Only one of the two is set.
    struct Form {
        bool json = false;
        bool explain = false; ///< What the extended attributes mean follows the report.
    };

    /// Relative names are in the current folder; if it is unknown, its error is reported for them. Both
    /// references outlive the command.
    ReportCommand(const ProgramSources& sources, Output& output)
        : sources_(sources)
        , currentFolder_(sources.currentFolder())
        , output_(output) {}

    /// Reports on every name, with so many threads (NameWorkers.h). Errors for single names are printed, the
    /// others still reported. `source` names the list in errors about it.
    ExitStatus run(Names& names, std::string_view source, Form form, std::size_t jobs);

private:
    void reportOn(const std::string& name, Form form, NameResults& results) const;
    platform::Result<platform::URL> open(const std::string& name) const;
    void print(const platform::URL& url, const std::string& name, Form form, NameResults& results) const;

    const ProgramSources& sources_;
    platform::Result<std::string> currentFolder_;
    Output& output_;
};

} // namespace tolvane::cli
