#include "cli/Program.h"

#include "cli/Arguments.h"
#include "cli/AttributesCommand.h"
#include "cli/BookmarkCommand.h"
#include "cli/FindCommand.h"
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

/// Calls the function with the names of a request for several items, and what they are read from.
template <typename Asked, typename Function>
ExitStatus withNames(const Asked& request, const ProgramSources& sources, const Function& function) {
    if (!request.files0From) {
        ListedNames names(request.names);
        return function(names, std::string_view());
    }

    if (*request.files0From == "-") {
        NulSeparatedNames names(sources.standardInput);
        return function(names, "standard input");
    }
    const auto list = sources.openForReading(*request.files0From);
    if (!list) {
        complain(sources.standardError, *request.files0From + ": " + list.error().localizedDescription());
        return ExitStatus::failure;
    }
    NulSeparatedNames names(**list);
    return function(names, *request.files0From);
}

ExitStatus runRequest(const ReportRequest& request, const ProgramSources& sources) {
    Output output(sources.standardOutput);
    ReportCommand command(sources, output);
    return withNames(request, sources, [&](Names& names, std::string_view source) {
        return command.run(
            names, source, {request.json, request.explain}, request.jobs.value_or(sources.usualJobs));
    });
}

ExitStatus runRequest(const AttributesRequest& request, const ProgramSources& sources) {
    ReadingProgress progress(sources.standardError);
    OutputBesideProgress stream(sources.standardOutput, progress);
    Output output(stream);
    AttributesCommand command(sources, output, request.verify ? &progress : nullptr);
    return withNames(request, sources, [&](Names& names, std::string_view source) {
        return command.run(names, source, request.json, request.jobs.value_or(sources.usualJobs));
    });
}

ExitStatus runRequest(const AttributesExplainRequest& request, const ProgramSources& sources) {
    Output output(sources.standardOutput);
    return AttributesCommand(sources, output).run(request);
}

ExitStatus runRequest(const BookmarkFindRequest& request, const ProgramSources& sources) {
    Output output(sources.standardOutput);
    return FindCommand(sources, output).run(request);
}

/// The verbs of the bookmark command that take one bookmark.
template <typename BookmarkRequest>
ExitStatus runRequest(const BookmarkRequest& request, const ProgramSources& sources) {
    Output output(sources.standardOutput);
    return BookmarkCommand(sources, output).run(request);
}

} // namespace

details::ExplanationSources explanationSources(const ProgramSources& sources) {
    return {sources.files, sources.contents, sources.accountName, sources.facts, sources.linkAttributes};
}

ExitStatus runProgram(std::span<const std::string> arguments, const ProgramSources& sources) {
    return std::visit(
        [&sources](const auto& request) { return runRequest(request, sources); }, parseArguments(arguments));
}

} // namespace tolvane::cli
