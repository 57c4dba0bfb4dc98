#include "resolver/FoundBookmarksController.h"

#include "containers/FindingTexts.h"
#include "containers/FindingsFile.h"
#include "platform/model/Window.h"
#include "platform/values/Utf8.h"

#include <algorithm>

namespace tolvane::resolver {

using containers::Finding;
using containers::FoundBookmarks;

namespace {

std::string countOf(std::size_t count, std::string_view one, std::string_view more) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : more);
}

} // namespace

void FoundBookmarksController::viewDidLoad() {
    platform::ContentController::viewDidLoad();
    findingsTable->setOrderHandler(
        [this](platform::TableOrder order) { arrange([&] { rows_->sort(order); }); });
    findingsTable->setOpenHandler([this](std::size_t /*row*/) { openFinding(this); });
    selections_ = findingsTable->observeSelection([this] { showDetails(); });
    filterEdits_ =
        filterTextbox->observe([this] { arrange([this] { rows_->filter(filterTextbox->stringValue()); }); });
}

void FoundBookmarksController::searchIn(const platform::URL& file) {
    file_ = file;
    view().window()->setTitle(platform::shownText(file.lastPathComponent()) + " — Bookmarks");
    const auto path = file.fileSystemRepresentation();
    if (!path) {
        setStatus("This URL names no file.");
        return;
    }
    setStatus("Searching the file …");
    search_ = sources_.tasks.start(
        [this, contents = sources_.contents, attributes = sources_.extendedAttributes,
         composed = sources_.composedText, path = *path](const platform::BackgroundLink& link) {
            auto found = std::make_shared<std::expected<FoundBookmarks, std::string>>(
                findingsIn(path, {*contents, *attributes, composed}));
            link.deliver([this, found] {
                if (*found) {
                    show(std::move(**found));
                } else {
                    setStatus(found->error());
                }
            });
        });
}

void FoundBookmarksController::show(FoundBookmarks found) {
    container_ = found.container;
    rows_ = std::make_shared<FindingRows>(std::move(found.findings));
    findingsTable->setRows(rows_);
    const bool hasMarks = std::ranges::any_of(
        rows_->findings(), [](const Finding& finding) { return finding.mismatch == true; });
    summaryTextbox->setNote(hasMarks ? std::string(containers::mismatchMeaning) : "");
    std::string status;
    for (const std::string& complaint : found.complaints) {
        status += (status.empty() ? "" : "\n") + complaint;
    }
    setStatus(std::move(status));
    arrange([this] { rows_->filter(filterTextbox->stringValue()); });
    if (rows_->rowCount() > 0) {
        findingsTable->selectRow(0);
    }
}

std::function<void(platform::Sender)> FoundBookmarksController::actionForSelector(std::string_view selector) {
    static constexpr std::array<platform::NamedAction<FoundBookmarksController>, 5> actions{{
        {"openFinding:", &FoundBookmarksController::openFinding},
        {"resolveAll:", &FoundBookmarksController::resolveAll},
        {"stopResolving:", &FoundBookmarksController::stopResolving},
        {"exportCSV:", &FoundBookmarksController::exportCSV},
        {"exportJSON:", &FoundBookmarksController::exportJSON},
    }};
    return platform::actionIn(actions, *this, selector);
}

bool FoundBookmarksController::isActionEnabled(std::string_view selector) {
    if (selector == "openFinding:") {
        const Finding* const finding = selectedFinding();
        return finding != nullptr && !finding->bytes.empty();
    }
    if (selector == "resolveAll:") {
        return rows_ && !resolving_ && std::ranges::any_of(rows_->findings(), isResolvable);
    }
    if (selector == "stopResolving:") {
        return resolving_ != nullptr;
    }
    if (selector == "exportCSV:" || selector == "exportJSON:") {
        return rows_ && !rows_->findings().empty();
    }
    return platform::ContentController::isActionEnabled(selector);
}

void FoundBookmarksController::openFinding(platform::Sender /*sender*/) {
    const Finding* const finding = selectedFinding();
    if (finding == nullptr) {
        return;
    }
    if (finding->bytes.empty()) {
        setStatus("This is no bookmark, so the resolver has nothing to show.");
        return;
    }
    sources_.showInResolver(finding->bytes);
}

void FoundBookmarksController::resolveAll(platform::Sender /*sender*/) {
    if (!isActionEnabled("resolveAll:")) {
        return;
    }
    const auto all = static_cast<std::size_t>(std::ranges::count_if(rows_->findings(), isResolvable));
    resolvingProgress->setProgress({0, all});
    setStatus({});
    resolving_ = sources_.tasks.start([this, rows = std::shared_ptr<const FindingRows>(rows_),
                                       bookmarks = sources_.bookmarks](const platform::BackgroundLink& link) {
        resolveFindings(
            rows->findings(), *bookmarks, [&link] { return link.isCancelled(); },
            [this, &link](Outcomes outcomes) {
                link.deliver([this, delivered = std::make_shared<Outcomes>(std::move(outcomes))] {
                    takeOutcomes(std::move(*delivered));
                });
            });
        link.deliver([this] { finishResolving(); });
    });
}

void FoundBookmarksController::takeOutcomes(Outcomes outcomes) {
    auto progress = resolvingProgress->progress();
    for (auto& [finding, outcome] : outcomes) {
        rows_->setOutcome(finding, std::move(outcome));
        ++progress.done;
    }
    findingsTable->cellsChanged();
    resolvingProgress->setProgress(progress);
    showDetails();
}

void FoundBookmarksController::finishResolving() {
    resolving_ = nullptr;
    resolvingProgress->setProgress({});
    setStatus(outcomeSummary());
}

void FoundBookmarksController::stopResolving(platform::Sender /*sender*/) {
    if (!resolving_) {
        return;
    }
    finishResolving();
    setStatus("Stopped. " + outcomeSummary());
}

std::string FoundBookmarksController::outcomeSummary() const {
    std::size_t found = 0;
    std::size_t stale = 0;
    std::size_t missing = 0;
    for (std::size_t i = 0; i < rows_->findings().size(); ++i) {
        if (const FindingOutcome* const outcome = rows_->outcomeOf(i)) {
            ++(outcome->isFound ? found : missing);
            stale += outcome->isStale ? 1 : 0;
        }
    }
    return countOf(found, "item", "items") + " found, " + std::to_string(stale) + " of them stale; "
           + std::to_string(missing) + " not found.";
}

void FoundBookmarksController::exportAs(const std::string& extension) {
    if (!rows_ || !file_) {
        return;
    }
    const std::shared_ptr<platform::SavePanel> panel = sources_.savePanels.savePanel();
    panel->setCanCreateDirectories(true);
    panel->setAllowedFileTypes({extension});
    panel->setDirectoryURL(sources_.session.homeDirectory());
    panel->setNameFieldStringValue(
        platform::shownText(file_->lastPathComponent()) + " bookmarks." + extension);
    panel->setSubject(*file_);
    panel->beginWithCompletionHandler([panel, controller = self(), asCsv = extension == "csv"](int response) {
        if (response != platform::modalResponseOK) {
            return;
        }
        if (const std::optional<platform::URL> destination = panel->chosenURL()) {
            controller->writeTo(*destination, asCsv);
        }
    });
}

void FoundBookmarksController::writeTo(const platform::URL& destination, bool asCsv) {
    const auto& findings = rows_->findings();
    const std::string text = asCsv ? containers::findingsAsCsv(file_->path(), container_, findings)
                                   : containers::findingsAsJson(file_->path(), container_, findings);
    const auto written = sources_.textFiles.writeInPlace(text, destination);
    setStatus(
        written ? countOf(findings.size(), "finding", "findings") + " exported."
                : "Not exported: " + written.error().localizedDescription() + ".");
}

/// Changes which rows there are and their order; the finding that was selected stays so where it is seen.
void FoundBookmarksController::arrange(const std::function<void()>& change) {
    if (!rows_) {
        return;
    }
    const auto row = findingsTable->selectedRow();
    const auto finding = row ? std::optional(rows_->findingAt(*row)) : std::nullopt;
    change();
    findingsTable->rowsChanged(finding ? rows_->rowOf(*finding) : std::nullopt);
    showSummary();
    showDetails();
}

void FoundBookmarksController::showSummary() {
    const std::size_t all = rows_->findings().size();
    const std::size_t shown = rows_->rowCount();
    const auto differing = std::ranges::count(
        rows_->findings(), true, [](const Finding& finding) { return finding.mismatch.value_or(false); });
    std::string text = shown == all ? std::string() : std::to_string(shown) + " of ";
    text += countOf(all, "finding", "findings") + " in "
            + std::string(containers::containerDescription(container_));
    if (differing > 0) {
        text += ", " + countOf(static_cast<std::size_t>(differing), "differs", "differ");
    }
    summaryTextbox->setStringValue(text + ".");
}

void FoundBookmarksController::showDetails() {
    const Finding* const finding = selectedFinding();
    std::string text = finding != nullptr ? containers::findingDetails(*finding) : "";
    if (finding != nullptr) {
        const auto* const outcome = rows_->outcomeOf(rows_->findingAt(*findingsTable->selectedRow()));
        if (outcome != nullptr) {
            text +=
                (outcome->isFound ? outcome->isStale ? "Leads to (stale): " : "Leads to: " : "Not found: ")
                + outcome->text + "\n";
        }
    }
    if (text != detailsTextbox->string()) {
        detailsTextbox->setString(std::move(text));
    }
}

const Finding* FoundBookmarksController::selectedFinding() const {
    const auto row = rows_ ? findingsTable->selectedRow() : std::nullopt;
    return row ? &rows_->findings()[rows_->findingAt(*row)] : nullptr;
}

void FoundBookmarksController::setStatus(std::string status) const {
    if (platform::Window* const window = view().window()) {
        window->setStatus(std::move(status));
    }
}

} // namespace tolvane::resolver
