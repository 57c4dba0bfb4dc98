#include "cli/Program.h"

#include "cli/Arguments.h"
#include "cli/BookmarkCommand.h"
#include "cli/Names.h"
#include "cli/ReportCommand.h"

namespace tolvane::cli {

namespace {

ExitStatus runRequest(const UsageError& error, const ProgramSources& sources) {
    complain(sources.standardError, error.message);
    static_cast<void>(sources.standardError.write("Try 'tolvane-cli --help'.\n"));
    return ExitStatus::wrongUsage;
}

ExitStatus runRequest(const Information& information, const ProgramSources& sources) {
    if (const auto written = sources.standardOutput.write(information.text); !written) {
        complain(sources.standardError, "standard output: " + written.error().localizedDescription());
        return ExitStatus::failure;
    }
    return ExitStatus::success;
}

ExitStatus runRequest(const ReportRequest& request, const ProgramSources& sources) {
    Output output(sources.standardOutput);
    ReportCommand command(sources, output);
    if (!request.files0From) {
        ListedNames names(request.names);
        return command.run(names, {}, request.json);
    }

    if (*request.files0From == "-") {
        NulSeparatedNames names(sources.standardInput);
        return command.run(names, "standard input", request.json);
    }
    const auto list = sources.openForReading(*request.files0From);
    if (!list) {
        complain(sources.standardError, *request.files0From + ": " + list.error().localizedDescription());
        return ExitStatus::failure;
    }
    NulSeparatedNames names(**list);
    return command.run(names, *request.files0From, request.json);
}

/// The verbs of the bookmark command.
template <typename BookmarkRequest>
ExitStatus runRequest(const BookmarkRequest& request, const ProgramSources& sources) {
    Output output(sources.standardOutput);
    return BookmarkCommand(sources, output).run(request);
}

} // namespace

ExitStatus runProgram(std::span<const std::string> arguments, const ProgramSources& sources) {
    return std::visit(
        [&sources](const auto& request) { return runRequest(request, sources); }, parseArguments(arguments));
}

} // namespace tolvane::cli
