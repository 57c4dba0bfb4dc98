#include "cli/ReportCommand.h"

#include "cli/JsonReport.h"
#include "cli/TerminalText.h"
#include "details/ViewController.h"
#include "inspect/Document.h"
#include "platform/FatalError.h"
#include "platform/WindowController.h"

#include <memory>
#include <utility>

namespace tolvane::cli {

using platform::Result;

ExitStatus ReportCommand::run(Names& names, std::string_view source, bool json) {
    ExitStatus status = ExitStatus::success;
    while (!output_.failure() && !errorsAreGone_) {
        const Result<std::optional<std::string>> name = names.next();
        if (!name) {
            complainOf(source, name.error().localizedDescription());
            status = ExitStatus::failure;
            break;
        }
        if (!*name) {
            break;
        }
        if (!reportOn(**name, json)) {
            status = ExitStatus::failure;
        }
    }
    return finished(output_, errors_, status);
}

Result<std::shared_ptr<platform::Document>> ReportCommand::open(const std::string& name) const {
    const Result<platform::URL> url = urlOfName(name, currentFolder_);
    if (!url) {
        return std::unexpected(url.error());
    }
    return documents_.openDocumentWithContentsOfURL(*url);
}

bool ReportCommand::reportOn(const std::string& name, bool json) {
    const Result<std::shared_ptr<platform::Document>> document = open(name);
    if (!document) {
        complainOf(name.empty() ? "''" : name, document.error().localizedDescription());
        return false;
    }
    if (!json && anyPrinted_) {
        output_.write("\n");
    }
    output_.write(textFor(**document, json));
    (*document)->close();
    anyPrinted_ = true;
    output_.write("\n");
    // A reader gets each report when it is done, and a fatal stop over the next item takes none back.
    return output_.flush();
}

std::string ReportCommand::textFor(const platform::Document& document, bool json) const {
    const auto* inspected = dynamic_cast<const inspect::Document*>(&document);
    const auto window = inspected != nullptr && !inspected->windowControllers().empty()
                            ? std::dynamic_pointer_cast<details::ViewController>(
                                  inspected->windowControllers().front()->contentViewController())
                            : nullptr;
    if (!window) {
        platform::fatalError("an opened document has no details window");
    }

    if (json) {
        return jsonReport(*window, *inspected->theSizes().front(), output_.isTerminal());
    }
    if (output_.isTerminal()) {
        return details::reportText(terminalFields(window->reportFields()));
    }
    window->buildReport();
    return window->saveString();
}

void ReportCommand::complainOf(std::string_view name, std::string_view reason) {
    // What was printed before stands before the complaint where both end up in one place.
    output_.flush();
    if (!complain(errors_, std::string(name).append(": ").append(reason))) {
        errorsAreGone_ = true;
    }
}

} // namespace tolvane::cli
