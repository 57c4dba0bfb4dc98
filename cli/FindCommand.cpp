#include "cli/FindCommand.h"

#include "cli/FileBookmarks.h"
#include "cli/FolderFiles.h"
#include "cli/JsonWriter.h"
#include "cli/TerminalText.h"
#include "containers/FindingTexts.h"
#include "containers/JsonFinding.h"

namespace tolvane::cli {

using containers::Finding;
using containers::FoundBookmarks;

namespace {

// Most files are passed over in some ten microseconds, and so is a name handed to another thread.
constexpr std::size_t filesAtOnce = 16;

platform::Error failureOf(const std::error_code& code) {
    return platform::posixError(code.value());
}

std::string lineOf(const std::string& name, std::size_t index, const Finding& finding) {
    std::string line =
        terminalLine(name) + "\t" + std::to_string(index) + "\t" + std::string(findingKindName(finding.kind));
    for (const std::string& column :
         {finding.where, targetText(finding), volumeText(finding), createdText(finding)}) {
        line += "\t" + terminalLine(column);
    }
    if (finding.mismatch == true) {
        line += "\tdiffers from " + terminalLine(*finding.neighbour);
    }
    if (!finding.flags.empty()) {
        line += "\tflags: " + terminalLine(flagsText(finding));
    }
    return line + "\n";
}

void printFindings(const std::string& name, const FoundBookmarks& found, bool asJson, NameResults& results) {
    Output& output = results.output();
    for (std::size_t i = 0; i < found.findings.size() && !output.failure(); ++i) {
        const Finding& finding = found.findings[i];
        if (asJson) {
            JsonWriter json(output, output.isTerminal());
            containers::writeFindingJson(json, name, i, found.container, finding);
            json.finish();
            output.write("\n");
        } else {
            output.write(lineOf(name, i, finding));
        }
        if (!finding.isReadable) {
            results.complain(
                name, (finding.where.empty() ? "" : finding.where + ": ") + finding.warnings.front());
        }
    }
    for (const std::string& complaint : found.complaints) {
        results.complain(name, complaint);
    }
}

} // namespace

ExitStatus FindCommand::run(const BookmarkFindRequest& request) {
    FolderFiles files(request.names, {request.recursive, request.allVolumes}, sources_.contents, [this] {
        return currentFolder_;
    });
    const auto searchOne = [this, &request](const std::string& name, NameResults& results) {
        search(name, request, results);
    };
    const NameWork work{
        .work = searchOne, .jobs = request.jobs.value_or(sources_.usualJobs), .namesAtOnce = filesAtOnce};
    return finished(
        output_, sources_.standardError, workOnNames(files, work, output_, sources_.standardError));
}

void FindCommand::search(const std::string& name, const BookmarkFindRequest& request, NameResults& results) {
    const std::string shown = name.empty() ? "''" : name;
    const auto url = urlOfName(name, currentFolder_);
    if (!url) {
        results.complain(shown, url.error().localizedDescription());
        return;
    }
    const auto look = sources_.contents.lookAtTarget(url->path());
    if (look && look->kind == platform::ItemKind::folder) {
        const auto listed =
            sources_.contents.visitFolder(url->path(), [](std::string_view, const auto&) { return false; });
        results.complain(
            shown, !request.recursive ? "a folder is searched with --recursive only"
                   : listed           ? "the folder could not be listed"
                                      : failureOf(listed.error()).localizedDescription());
        return;
    }
    if (look && look->kind != platform::ItemKind::regularFile) {
        results.complain(shown, "only files and folders are searched");
        return;
    }
    auto searched = fileSearchSources(sources_);
    searched.manyBytes = &manyBytes_;
    const auto found = resolver::searchFile(url->path(), searched);
    if (!found) {
        results.complain(shown, found.error().localizedDescription());
    } else if (*found) {
        printFindings(name, **found, request.json, results);
    }
}

} // namespace tolvane::cli
