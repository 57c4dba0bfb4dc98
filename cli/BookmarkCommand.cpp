#include "cli/BookmarkCommand.h"

#include "cli/JsonBookmark.h"
#include "cli/JsonWriter.h"
#include "cli/Names.h"
#include "cli/TerminalText.h"
#include "platform/Base64.h"
#include "platform/CocoaError.h"
#include "platform/FatalError.h"
#include "platform/Utf8.h"
#include "platform/bookmark/BookmarkComposer.h"
#include "platform/bookmark/BookmarkReader.h"

#include <algorithm>
#include <span>
#include <utility>

namespace tolvane::cli {

using platform::Data;
using platform::Result;

namespace {

constexpr std::string_view volumePathPrefix = "\nvolfs path : ";

std::string faultSentence(const platform::BookmarkFault& fault) {
    return "Expected at byte " + std::to_string(fault.offset) + ": " + std::string(fault.expected) + ".";
}

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

platform::Error errorWith(std::string_view sentence) {
    return platform::cocoaError(platform::NSFileReadUnknownError, sentence);
}

/// What the path field holds behind the path itself: nothing, or the line with the volume path.
std::string_view behindPath(std::string_view fieldText, const platform::URL& url) {
    return fieldText.substr(std::min(platform::shownText(url.path()).size(), fieldText.size()));
}

} // namespace

ExitStatus BookmarkCommand::run(const BookmarkMakeRequest& request) {
    if (request.alias && output_.isTerminal()) {
        complain(
            sources_.standardError,
            "bookmark make: an alias file is no text for a terminal; send it to a file or a pipe");
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
    const Window window = openWindow(input->text);
    window.controller->analyseButton(nullptr);
    return showBytes(subject, window, *input);
}

ExitStatus BookmarkCommand::run(const BookmarkResolveRequest& request) {
    const Subject subject{request.origin, request.json};
    const Result<BookmarkInput> input = readBookmarkInput(request.origin, sources_);
    if (!input) {
        return failToRead(subject, input.error());
    }
    const Window window = openWindow(input->text);
    window.controller->resolveButton(nullptr);
    if (!sources_.witness.resolved()) {
        return failToDecode(subject, window, *input);
    }
    if (request.verbose) {
        printAnalysis(window);
    }
    if (const std::string reason = reasonOfFailure(); !reason.empty()) {
        return fail(subject, window.controller->filePathTextbox->stringValue(), reason);
    }
    if (request.verbose) {
        output_.write("\n");
    }
    return printResolution(subject, window);
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
            errorWith("No alias file can be made of its bookmark. " + faultSentence(structure.error())));
    }
    const auto contents = platform::contentsForAliasFile(platform::bookmarkContents(*structure));
    auto aliasFile = platform::composeAliasFile(contents, sources_.session.now());
    if (!aliasFile) {
        return std::unexpected(errorWith(
            "No alias file can be made of its bookmark: " + std::string(aliasFile.error().reason) + "."));
    }
    return *std::move(aliasFile);
}

BookmarkCommand::Window BookmarkCommand::openWindow(const std::string& text) const {
    Window window;
    window.windowController = std::dynamic_pointer_cast<platform::WindowController>(
        sources_.storyboard.instantiateControllerWithIdentifier("Bookmark Resolver Window"));
    if (window.windowController) {
        window.controller = std::dynamic_pointer_cast<resolver::TRViewController>(
            window.windowController->contentViewController());
    }
    if (!window.controller) {
        platform::fatalError("the storyboard has no resolver window");
    }
    window.windowController->showWindow();
    window.controller->inputTextbox->setString(text);
    return window;
}

ExitStatus BookmarkCommand::print(std::string_view text) {
    output_.write(text);
    return finished(output_, sources_.standardError, ExitStatus::success);
}

void BookmarkCommand::printAnalysis(const Window& window) {
    const std::string analysis = window.controller->outputTextbox->string();
    output_.write(output_.isTerminal() ? terminalLines(analysis) : analysis);
    output_.write("\n");
}

ExitStatus BookmarkCommand::showBytes(
    const Subject& subject, const Window& window, const BookmarkInput& input) {
    const auto decoded = platform::base64DecodedData(window.controller->inputTextbox->string());
    if (!decoded) {
        return failToDecode(subject, window, input);
    }
    const auto structure = platform::readBookmark(input.bytes ? *input.bytes : *decoded);
    if (!subject.json) {
        printAnalysis(window);
    }
    if (!structure) {
        const std::string_view message = "This is no bookmark that can be read.";
        return fail(subject, message, faultSentence(structure.error()));
    }
    if (subject.json) {
        JsonWriter json(output_, output_.isTerminal());
        writeBookmarkJson(json, *structure);
        json.finish();
        output_.write("\n");
    }
    return finished(output_, sources_.standardError, ExitStatus::success);
}

ExitStatus BookmarkCommand::printResolution(const Subject& subject, const Window& window) {
    const platform::ResolvedBookmark& resolved = **sources_.witness.resolved();
    const std::string& shown = window.controller->filePathTextbox->stringValue();
    const std::string_view behind = behindPath(shown, *resolved.url);
    if (subject.json) {
        JsonWriter json(output_, output_.isTerminal());
        writeResolutionJson(json, resolved, behind.empty() ? behind : behind.substr(volumePathPrefix.size()));
        json.finish();
        return print("\n");
    }
    if (output_.isTerminal()) {
        return print(
            terminalLine(shown.substr(0, shown.size() - behind.size())) + std::string(behind) + "\n");
    }
    return print(shown + "\n");
}

/// Why resolving gave no path; empty when it gave one.
std::string BookmarkCommand::reasonOfFailure() const {
    const Result<platform::ResolvedBookmark>& resolved = *sources_.witness.resolved();
    if (!resolved) {
        return resolved.error().localizedDescription();
    }
    if (!resolved->url) {
        return "It names no item.";
    }
    if (const auto& failure = sources_.witness.attributesFailure()) {
        return "The item was found at " + resolved->url->path()
               + ", but cannot be looked at: " + failure->localizedDescription() + ".";
    }
    return {};
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
        JsonWriter json(output_, output_.isTerminal());
        json.beginObject().key("error").text(message).key("reason").text(reason).endObject();
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
    const Subject& subject, const Window& window, const BookmarkInput& input) {
    const auto fault = platform::base64Fault(window.controller->inputTextbox->string());
    if (!fault) {
        platform::fatalError("the resolver window did not take a text that is base-64");
    }
    return fail(
        subject, window.controller->filePathTextbox->stringValue(), base64Complaint(input.text, *fault));
}

} // namespace tolvane::cli
