#include "details/ViewController.h"

/// Whether the details window still shows what there is, and looking again.
namespace tolvane::details {

namespace {

constexpr std::string_view notSaved = "Report not saved";

} // namespace

void ViewController::reload(platform::Sender /*sender*/) {
    const std::shared_ptr<inspect::Document> document = shownDocument();
    if (!document) {
        return;
    }
    if (sources_.documents.reopenDocument(document)) {
        isReportLost_ = false;
        gather(Earlier::forgotten);
    }
    lookForChange();
}

void ViewController::lookForChange() {
    const std::shared_ptr<inspect::Document> document = shownDocument();
    change_ = document ? changeOf(document->theSizes().front()->url(), sources_.resources) : ItemChange::none;
    showStatus();
}

void ViewController::showStatus() {
    std::string status(isReportLost_ ? notSaved : "");
    const std::string_view note = noteOf(change_);
    status += status.empty() || note.empty() ? "" : ". ";
    requireWindow().setStatus(status.append(note));
}

} // namespace tolvane::details
