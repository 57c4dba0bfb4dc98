#pragma once

#include "cli/Arguments.h"
#include "cli/NameWorkers.h"
#include "cli/Names.h"
#include "cli/Output.h"
#include "cli/Program.h"
#include "cli/ReadingProgress.h"
#include "details/ItemExplanations.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tolvane::cli {

/// Says what extended attributes mean: those of each named item, or a value from elsewhere.
class AttributesCommand {
public:
    /// All of these outlive the command. With `progress` the content of items that have checksums is read.
    AttributesCommand(const ProgramSources& sources, Output& output, ReadingProgress* progress = nullptr)
        : sources_(sources)
        , output_(output)
        , progress_(progress)
        , currentFolder_(sources.currentFolder()) {}

    /// Explains the attributes of each item, as lines divided by blank ones, or as one JSON object each, with
    /// so many threads (NameWorkers.h). `source` is what the names are read from, for a complaint.
    ExitStatus run(Names& names, std::string_view source, bool json, std::size_t jobs);

    ExitStatus run(const AttributesExplainRequest& request);

private:
    void explainNamed(const std::string& name, bool json, NameResults& results) const;
    void complainOf(std::string_view name, std::string_view reason);

    const ProgramSources& sources_;
    Output& output_;
    ReadingProgress* progress_;
    platform::Result<std::string> currentFolder_;
};

/// The lines of `attributes` below a report: the explained attributes, each after a blank line.
std::string explanationLines(const details::ItemExplanations& explanations, bool isTerminal);

} // namespace tolvane::cli
