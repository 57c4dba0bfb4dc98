#pragma once

#include "cli/Complaint.h"
#include "cli/Names.h"
#include "cli/Output.h"
#include "cli/ProgramSources.h"
#include "platform/values/Error.h"
#include "platform/values/URL.h"

#include <string>
#include <string_view>

namespace tolvane::cli {

/// Gathers the details of each named item and prints them.
class ReportCommand {
public:
    /// Relative names are those of the current folder; where that is not known they are complained of with
    /// its error. Both references outlive the command.
    ReportCommand(const ProgramSources& sources, Output& output)
        : sources_(sources)
        , currentFolder_(sources.currentFolder())
        , output_(output) {}

    /// Reports on every name. One that cannot be opened is complained of, the others are still reported.
    /// `source` names the list for complaints about the list itself. Ends early only when standard output
    /// fails, or standard error does.
    ExitStatus run(Names& names, std::string_view source, bool json);

private:
    bool reportOn(const std::string& name, bool json);
    platform::Result<platform::URL> open(const std::string& name) const;
    void print(const platform::URL& url, bool json);
    void complainOf(std::string_view name, std::string_view reason);

    const ProgramSources& sources_;
    platform::Result<std::string> currentFolder_;
    Output& output_;
    bool anyPrinted_ = false;
    bool errorsAreGone_ = false;
};

} // namespace tolvane::cli
