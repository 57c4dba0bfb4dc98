#include "cli/FindCommand.h"

#include "cli/FolderFiles.h"
#include "cli/JsonFinding.h"
#include "cli/JsonWriter.h"
#include "cli/TerminalText.h"

namespace tolvane::cli {

using containers::Finding;
using platform::Data;
using platform::Result;

namespace {

platform::Error failureOf(const std::error_code& code) {
    return platform::posixError(code.value());
}

/// What a finding names, for people.
std::string targetText(const Finding& finding) {
    if (!finding.isReadable) {
        return "not readable";
    }
    return finding.path ? *finding.path : finding.url ? *finding.url : finding.name.value_or("");
}

std::string createdText(const Finding& finding) {
    if (finding.createdLocal) {
        return localTimeText(*finding.createdLocal) + " local time";
    }
    return finding.created ? finding.created->description() : "";
}

std::string lineOf(const std::string& name, std::size_t index, const Finding& finding) {
    std::string line =
        terminalLine(name) + "\t" + std::to_string(index) + "\t" + std::string(findingKindName(finding.kind));
    const std::string volume = finding.volumeName.value_or(finding.volumeUUID.value_or(""));
    for (const std::string& column : {finding.where, targetText(finding), volume, createdText(finding)}) {
        line += "\t" + terminalLine(column);
    }
    if (finding.mismatch == true) {
        line += "\tdiffers from " + terminalLine(*finding.neighbour);
    }
    return line + "\n";
}

} // namespace

Result<std::optional<Data>> containerContents(
    const std::string& path, const platform::FileContents& contents) {
    const auto file = contents.openForReading(path);
    if (!file) {
        return std::unexpected(failureOf(file.error()));
    }
    const auto size = (*file)->size();
    if (!size) {
        return std::unexpected(failureOf(size.error()));
    }
    Data bytes(std::min<std::uint64_t>(*size, containers::containerFrontLength));
    const auto front = (*file)->read(0, bytes);
    if (!front) {
        return std::unexpected(failureOf(front.error()));
    }
    bytes.resize(*front);
    if (bytes.empty() || !containers::mayBeContainer(bytes)) {
        return std::nullopt;
    }
    if (*size > containers::mostContainerBytes) {
        return std::unexpected(
            platform::cocoaError(platform::NSFileReadUnknownError, "more than 256 MiB are not searched"));
    }
    bytes.resize(*size);
    const auto all = (*file)->read(*front, std::span(bytes).subspan(*front));
    if (!all) {
        return std::unexpected(failureOf(all.error()));
    }
    bytes.resize(*front + *all);
    return bytes;
}

ExitStatus FindCommand::run(const BookmarkFindRequest& request) {
    json_ = request.json;
    FolderFiles files(
        request.names, {request.recursive, request.allVolumes}, sources_.contents, sources_.currentFolder);
    while (!output_.failure()) {
        // Names that were given cannot fail.
        const auto name = files.next();
        if (!name || !*name) {
            break;
        }
        search(**name, request.recursive);
    }
    return finished(output_, sources_.standardError, status_);
}

void FindCommand::search(const std::string& name, bool recursive) {
    const auto url = urlOfName(name, sources_.currentFolder());
    if (!url) {
        complainOf(name, url.error().localizedDescription());
        return;
    }
    const auto look = sources_.contents.lookAtTarget(url->path());
    if (look && look->kind == platform::ItemKind::folder) {
        const auto listed =
            sources_.contents.visitFolder(url->path(), [](std::string_view, const auto&) { return false; });
        complainOf(
            name, !recursive ? "a folder is searched with --recursive only"
                  : listed   ? "the folder could not be listed"
                             : failureOf(listed.error()).localizedDescription());
        return;
    }
    if (look && look->kind != platform::ItemKind::regularFile) {
        complainOf(name, "only files and folders are searched");
        return;
    }
    const Result<std::optional<Data>> bytes = containerContents(url->path(), sources_.contents);
    if (!bytes) {
        complainOf(name, bytes.error().localizedDescription());
        return;
    }
    if (const auto found = *bytes ? containers::findBookmarks(**bytes) : std::nullopt) {
        print(name, *found);
    }
}

void FindCommand::print(const std::string& name, const containers::FoundBookmarks& found) {
    for (std::size_t i = 0; i < found.findings.size() && !output_.failure(); ++i) {
        const Finding& finding = found.findings[i];
        if (json_) {
            JsonWriter json(output_, output_.isTerminal());
            writeFindingJson(json, name, i, found.container, finding);
            json.finish();
            output_.write("\n");
        } else {
            output_.write(lineOf(name, i, finding));
        }
        if (!finding.isReadable) {
            complainOf(name, (finding.where.empty() ? "" : finding.where + ": ") + finding.warnings.front());
        }
    }
    for (const std::string& complaint : found.complaints) {
        complainOf(name, complaint);
    }
}

void FindCommand::complainOf(const std::string& name, std::string_view reason) {
    // What was printed before stands before the complaint where both end up in one place.
    output_.flush();
    complain(sources_.standardError, (name.empty() ? "''" : name) + ": " + std::string(reason));
    status_ = ExitStatus::failure;
}

} // namespace tolvane::cli
