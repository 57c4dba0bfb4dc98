#include "cli/ReportCommand.h"

#include "cli/AttributesCommand.h"
#include "cli/JsonReport.h"
#include "cli/JsonWriter.h"
#include "cli/TerminalText.h"
#include "details/GatherDetails.h"
#include "details/Report.h"
#include "platform/services/DocumentOpening.h"
#include "platform/values/Utf8.h"

namespace tolvane::cli {

using platform::Result;

ExitStatus ReportCommand::run(Names& names, std::string_view source, Form form) {
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
        if (!reportOn(**name, form)) {
            status = ExitStatus::failure;
        }
    }
    return finished(output_, sources_.standardError, status);
}

bool ReportCommand::reportOn(const std::string& name, Form form) {
    const Result<platform::URL> url = open(name);
    if (!url) {
        complainOf(name.empty() ? "''" : name, url.error().localizedDescription());
        return false;
    }
    const bool isWhole = print(*url, name, form);
    // A reader gets each report when it is done, and a fatal stop over the next item takes none back.
    return output_.flush() && isWhole;
}

Result<platform::URL> ReportCommand::open(const std::string& name) const {
    const Result<platform::URL> url = urlOfName(name, currentFolder_);
    return url ? platform::identifiedURL(*url, sources_.files.resources) : url;
}

/// False if something that was asked for could not be read.
bool ReportCommand::print(const platform::URL& url, const std::string& name, Form form) {
    const inspect::SizeData sizes(url, sources_.files);
    details::GatheredDetails details =
        details::gatherDetails(sizes, {sources_.files.resources, sources_.bookmarks, sources_.session});
    const std::string title = platform::shownText(url.lastPathComponent());
    if (form.json) {
        JsonWriter writer(output_, output_.isTerminal());
        writeReportJson(writer, title, sizes, details);
        writer.finish();
    } else {
        details::ReportFields fields{
            title, std::move(details.texts), sources_.session.describeForLocale(details.gathered)};
        output_.write(anyPrinted_ ? "\n" : "");
        output_.write(details::reportText(output_.isTerminal() ? terminalFields(std::move(fields)) : fields));
    }
    output_.write("\n");
    anyPrinted_ = true;
    if (!form.explain) {
        return true;
    }
    const ItemExplanations explanations = explainItem(url, sizes.inode(), sources_);
    output_.write(explanationLines(explanations, output_.isTerminal()));
    for (const std::string& failure : explanations.failures) {
        complainOf(name, failure);
    }
    return explanations.failures.empty();
}

void ReportCommand::complainOf(std::string_view name, std::string_view reason) {
    // What was printed before stands before the complaint where both end up in one place.
    output_.flush();
    if (!complain(sources_.standardError, std::string(name).append(": ").append(reason))) {
        errorsAreGone_ = true;
    }
}

} // namespace tolvane::cli
