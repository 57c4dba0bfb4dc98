#pragma once

#include "cli/Complaint.h"
#include "cli/Names.h"
#include "cli/Output.h"
#include "platform/DocumentController.h"
#include "platform/Streams.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::cli {

/// Opens each named file as a document and prints what its window shows.
class ReportCommand {
public:
    /// Relative names are those of `currentFolder`; where that could not be found out they are complained of
    /// with its error. All references outlive the command.
    ReportCommand(
        platform::DocumentController& documents,
        platform::Result<std::string> currentFolder,
        Output& output,
        platform::OutputStream& errors)
        : documents_(documents)
        , currentFolder_(std::move(currentFolder))
        , output_(output)
        , errors_(errors) {}

    /// Reports on every name. One that cannot be opened is complained of, the others are still reported.
    /// `source` names the list for complaints about the list itself. Ends early only when standard output
    /// fails, or nobody can be told of a failure.
    ExitStatus run(Names& names, std::string_view source, bool json);

private:
    bool reportOn(const std::string& name, bool json);
    platform::Result<std::shared_ptr<platform::Document>> open(const std::string& name) const;
    std::string textFor(const platform::Document& document, bool json) const;
    void complainOf(std::string_view name, std::string_view reason);

    platform::DocumentController& documents_;
    platform::Result<std::string> currentFolder_;
    Output& output_;
    platform::OutputStream& errors_;
    bool anyPrinted_ = false;
    bool errorsAreGone_ = false;
};

} // namespace tolvane::cli
