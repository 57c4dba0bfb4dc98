#include "cli/ReportCommand.h"

#include "cli/AttributesCommand.h"
#include "cli/JsonReport.h"
#include "cli/JsonWriter.h"
#include "cli/TerminalText.h"
#include "details/GatherDetails.h"
#include "details/Report.h"
#include "platform/services/DocumentOpening.h"
#include "platform/values/Utf8.h"

#include <array>

namespace tolvane::cli {

using platform::Result;

// A report takes some ten microseconds, and so does handing a name to another thread.
constexpr std::size_t reportsAtOnce = 16;

ExitStatus ReportCommand::run(Names& names, std::string_view source, Form form, std::size_t jobs) {
    const auto report = [this, form](const std::string& name, NameResults& results) {
        reportOn(name, form, results);
    };
    const NameWork work{
        .work = report,
        .jobs = jobs,
        .namesAtOnce = reportsAtOnce,
        .separator = form.json ? "" : "\n",
        .source = source};
    return finished(
        output_, sources_.standardError, workOnNames(names, work, output_, sources_.standardError));
}

void ReportCommand::reportOn(const std::string& name, Form form, NameResults& results) const {
    const Result<platform::URL> url = open(name);
    if (!url) {
        results.complain(name.empty() ? "''" : name, url.error().localizedDescription());
        return;
    }
    print(*url, name, form, results);
}

Result<platform::URL> ReportCommand::open(const std::string& name) const {
    // All that a report asks of the URL comes from one look.
    static constexpr std::array<std::string_view, 3> keys{
        platform::NSURLFileSizeKey, platform::NSURLTotalFileSizeKey, platform::NSURLTypeIdentifierKey};
    const Result<platform::URL> url = urlOfName(name, currentFolder_);
    return url ? platform::identifiedURL(*url, sources_.files.resources, keys) : url;
}

void ReportCommand::print(
    const platform::URL& url, const std::string& name, Form form, NameResults& results) const {
    Output& output = results.output();
    const inspect::SizeData sizes(url, sources_.files);
    details::GatheredDetails details =
        details::gatherDetails(sizes, {sources_.files.resources, sources_.bookmarks, sources_.session});
    const std::string title = platform::shownText(url.lastPathComponent());
    if (form.json) {
        JsonWriter writer(output, output.isTerminal());
        writeReportJson(writer, title, sizes, details);
        writer.finish();
    } else {
        details::ReportFields fields{
            title, std::move(details.texts), sources_.session.describeForLocale(details.gathered)};
        if (output.isTerminal()) {
            fields = terminalFields(std::move(fields));
        }
        output.write(details::reportText(fields));
    }
    output.write("\n");
    if (!form.explain) {
        return;
    }
    const details::ItemExplanations explanations =
        details::explainItem(url, sizes.inode(), explanationSources(sources_));
    output.write(explanationLines(explanations, output.isTerminal()));
    for (const std::string& failure : explanations.failures) {
        results.complain(name, failure);
    }
}

} // namespace tolvane::cli
