#include "cli/BookmarkCommand.h"

#include "cli/FileBookmarks.h"
#include "cli/JsonBookmark.h"
#include "cli/JsonWriter.h"
#include "cli/Names.h"
#include "cli/ResolveAllCommand.h"
#include "cli/TerminalText.h"
#include "platform/bookmark/description/BookmarkProperties.h"
#include "platform/bookmark/description/SalvageDescription.h"
#include "platform/bookmark/format/BookmarkComposer.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/values/Utf8.h"
#include "resolver/AnalyseBookmark.h"

namespace tolvane::cli {

using platform::Data;
using platform::Result;

namespace {

std::string shownName(const std::string& name) {
    return name.empty() ? "''" : name;
}

/// Where the bookmark came from, for complaints; a text given as an argument has no name.
std::string nameOf(const BookmarkOrigin& origin) {
    if (origin.text) {
        return {};
    }
    return origin.file ? shownName(*origin.file) : "standard input";
}

/// "0003.bookmark": nothing of the container's is in it, so that no name in there can do harm.
std::string nameOfExtracted(std::size_t index, containers::FindingKind kind) {
    constexpr std::size_t digits = 4;
    const std::string number = std::to_string(index);
    return std::string(digits - std::min(digits, number.size()), '0') + number
           + (kind == containers::FindingKind::alias ? ".alias" : ".bookmark");
}

platform::Error errorWith(std::string_view sentence) {
    return platform::cocoaError(platform::NSFileReadUnknownError, sentence);
}

} // namespace

ExitStatus BookmarkCommand::run(const BookmarkMakeRequest& request) {
    if (request.alias && output_.isTerminal()) {
        complain(
            sources_.standardError,
            "bookmark make: an alias file cannot be printed to a terminal; send it to a file or a pipe");
        return ExitStatus::wrongUsage;
    }
    const Result<Data> bytes = request.alias ? newAliasFile(request.file) : newBookmark(request.file);
    if (!bytes) {
        return complainOf(shownName(request.file), bytes.error().localizedDescription());
    }
    if (request.alias) {
        return print({reinterpret_cast<const char*>(bytes->data()), bytes->size()});
    }
    return print(platform::base64EncodedString(*bytes) + "\n");
}

ExitStatus BookmarkCommand::run(const BookmarkReadRequest& request) {
    if (request.extractFolder) {
        return extract(request.aliasFile, *request.extractFolder);
    }
    if (request.at) {
        const auto found = bookmarksInFile(request.aliasFile, sources_);
        const Result<Data> bytes =
            found ? bookmarkNumbered(*found, *request.at) : std::unexpected(found.error());
        return bytes ? print(platform::base64EncodedString(*bytes) + "\n")
                     : complainOf(shownName(request.aliasFile), bytes.error().localizedDescription());
    }
    const auto url = urlOfName(request.aliasFile, sources_.currentFolder());
    const Result<Data> bytes = url ? sources_.bookmarks.bookmarkDataWithContentsOfURL(*url)
                                   : Result<Data>(std::unexpected(url.error()));
    if (!bytes) {
        return complainOf(shownName(request.aliasFile), bytes.error().localizedDescription());
    }
    return print(platform::base64EncodedString(*bytes) + "\n");
}

ExitStatus BookmarkCommand::run(const BookmarkShowRequest& request) {
    const Subject subject{request.origin, request.json};
    const Result<BookmarkInput> input = readBookmarkInput(request.origin, sources_);
    if (!input) {
        return failToRead(subject, input.error());
    }
    if (!input->bookmark) {
        return failToDecode(subject, resolver::notAnalysed, *input);
    }
    if (request.salvage && !input->structure) {
        return printSalvaged(subject, *input->bookmark);
    }
    if (!subject.json) {
        printAnalysis(*input);
    }
    if (!input->structure) {
        return fail(subject, platform::BookmarkFault::message, input->structure.error().description());
    }
    if (subject.json) {
        JsonWriter json(output_, output_.isTerminal());
        writeBookmarkJson(json, *input->structure);
        json.finish();
        output_.write("\n");
    }
    return finished(output_, sources_.standardError, ExitStatus::success);
}

ExitStatus BookmarkCommand::run(const BookmarkResolveRequest& request) {
    if (request.all) {
        return ResolveAllCommand(sources_, output_).run(*request.origin.file, request.json);
    }
    const Subject subject{request.origin, request.json};
    const Result<BookmarkInput> input = readBookmarkInput(request.origin, sources_);
    if (!input) {
        return failToRead(subject, input.error());
    }
    if (!input->bookmark) {
        return failToDecode(subject, resolver::notResolved, *input);
    }
    if (request.verbose) {
        printAnalysis(*input);
    }
    const resolver::BookmarkResolution resolution =
        resolver::resolveBookmark(*input->bookmark, false, sources_.bookmarks, sources_.files.fileManager);
    if (const std::string reason = reasonOfFailure(resolution); !reason.empty()) {
        return fail(subject, resolution.filePath, reason);
    }
    if (request.verbose) {
        output_.write("\n");
    }
    return printResolution(
        subject, *input->bookmark, resolution,
        request.verbose ? "\n" + comparisonText(*input->bookmark, *resolution.resolved) : "");
}

Result<Data> BookmarkCommand::newBookmark(const std::string& name) const {
    const auto url = urlOfName(name, sources_.currentFolder());
    return url ? sources_.bookmarks.bookmarkData(*url) : std::unexpected(url.error());
}

Result<Data> BookmarkCommand::newAliasFile(const std::string& name) const {
    const Result<Data> bookmark = newBookmark(name);
    if (!bookmark) {
        return bookmark;
    }
    const auto structure = platform::readBookmark(*bookmark);
    if (!structure) {
        return std::unexpected(
            errorWith("No alias file can be made of its bookmark: " + structure.error().description()));
    }
    const auto contents = platform::contentsForAliasFile(platform::bookmarkContents(*structure));
    auto aliasFile = platform::composeAliasFile(contents, sources_.session.now());
    if (!aliasFile) {
        return std::unexpected(errorWith(
            "No alias file can be made of its bookmark: " + std::string(aliasFile.error().reason) + "."));
    }
    return *std::move(aliasFile);
}

ExitStatus BookmarkCommand::extract(const std::string& file, const std::string& folder) {
    const auto found = bookmarksInFile(file, sources_);
    if (!found) {
        return complainOf(shownName(file), found.error().localizedDescription());
    }
    const auto url = urlOfName(folder, sources_.currentFolder());
    const auto newFiles = url ? sources_.openFolderForNewFiles(url->path())
                              : Result<std::unique_ptr<platform::NewFiles>>(std::unexpected(url.error()));
    if (!newFiles) {
        return complainOf(shownName(folder), newFiles.error().localizedDescription());
    }
    bool isWhole = found->complaints.empty();
    for (std::size_t i = 0; i < found->findings.size(); ++i) {
        const containers::Finding& finding = found->findings[i];
        if (finding.bytes.empty()) {
            continue;
        }
        const std::string name = nameOfExtracted(i, finding.kind);
        if (const auto written = (*newFiles)->write(name, finding.bytes); !written) {
            complainOf(std::string(folder).append("/").append(name), written.error().localizedDescription());
            isWhole = false;
        } else {
            output_.write(name + "\t" + terminalLine(finding.where) + "\n");
        }
    }
    for (const std::string& complaint : found->complaints) {
        complainOf(shownName(file), complaint);
    }
    return finished(output_, sources_.standardError, isWhole ? ExitStatus::success : ExitStatus::failure);
}

ExitStatus BookmarkCommand::print(std::string_view text) {
    output_.write(text);
    return finished(output_, sources_.standardError, ExitStatus::success);
}

void BookmarkCommand::printAnalysis(const BookmarkInput& input) {
    const auto rewritten =
        input.isRewritten ? std::optional(platform::readBookmark(*input.bookmark)) : std::nullopt;
    const auto& structure = rewritten ? *rewritten : input.structure;
    const std::string analysis = resolver::bookmarkAnalysis([&structure](std::string_view key) {
        return structure ? std::optional(platform::storedProperties(*structure, key)) : std::nullopt;
    });
    output_.write(output_.isTerminal() ? terminalLines(analysis) : analysis);
    output_.write("\n");
}

ExitStatus BookmarkCommand::printSalvaged(const Subject& subject, std::span<const std::byte> bytes) {
    const auto salvaged = platform::salvageBookmark(bytes);
    if (!salvaged) {
        return fail(subject, "Nothing of the bookmark can be read:", salvaged.error().description());
    }
    if (subject.json) {
        JsonWriter json(output_, output_.isTerminal());
        writeSalvageJson(json, *salvaged);
        json.finish();
    } else {
        const std::string text = platform::salvageDescription(*salvaged);
        output_.write(output_.isTerminal() ? terminalLines(text) : text);
    }
    output_.write("\n");
    return complainOf(nameOf(subject.origin), salvaged->fault.sentence());
}

ExitStatus BookmarkCommand::printResolution(
    const Subject& subject,
    std::span<const std::byte> bookmark,
    const resolver::BookmarkResolution& resolution,
    std::string_view appended) {
    const platform::ResolvedBookmark& resolved = *resolution.resolved;
    if (subject.json) {
        JsonWriter json(output_, output_.isTerminal());
        const auto compared = comparedWithItem(bookmark, resolved, sources_.bookmarks);
        writeResolutionJson(json, resolved, resolution.volumePath.value_or(std::string()), compared.facts);
        json.finish();
        return print("\n");
    }
    if (output_.isTerminal()) {
        const std::string path = terminalLine(platform::shownText(resolved.url->path()));
        return print(resolver::filePathText(path, resolution.volumePath).append("\n").append(appended));
    }
    return print((resolution.filePath + "\n").append(appended));
}

std::string BookmarkCommand::comparisonText(
    std::span<const std::byte> bookmark, const platform::ResolvedBookmark& resolved) const {
    const auto compared = comparedWithItem(bookmark, resolved, sources_.bookmarks);
    return resolver::storedAndFoundText(resolved.match, compared, [this](std::string_view text) {
        return output_.isTerminal() ? terminalLine(text) : platform::shownText(text);
    });
}

ExitStatus BookmarkCommand::complainOf(std::string_view name, std::string_view reason) {
    // What was printed before stands before the complaint where both end up in one place.
    output_.flush();
    complain(
        sources_.standardError,
        name.empty() ? std::string(reason) : std::string(name).append(": ").append(reason));
    return finished(output_, sources_.standardError, ExitStatus::failure);
}

ExitStatus BookmarkCommand::fail(const Subject& subject, std::string_view message, std::string_view reason) {
    if (subject.json) {
        // A colon leads to the reason, which has a key of its own here.
        std::string error(message);
        if (error.ends_with(':')) {
            error.back() = '.';
        }
        JsonWriter json(output_, output_.isTerminal());
        json.beginObject().key("error").text(error).key("reason").text(reason).endObject();
        json.finish();
        output_.write("\n");
    }
    return complainOf(nameOf(subject.origin), std::string(message).append(" ").append(reason));
}

ExitStatus BookmarkCommand::failToRead(const Subject& subject, const platform::Error& error) {
    if (subject.json) {
        return fail(subject, "The bookmark cannot be read:", error.localizedDescription() + ".");
    }
    return complainOf(nameOf(subject.origin), error.localizedDescription());
}

ExitStatus BookmarkCommand::failToDecode(
    const Subject& subject, std::string_view message, const BookmarkInput& input) {
    return fail(subject, message, base64Complaint(input.text, input.bookmark.error()));
}

} // namespace tolvane::cli
