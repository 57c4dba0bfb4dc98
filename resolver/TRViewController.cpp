#include "resolver/TRViewController.h"

#include "platform/values/Base64.h"
#include "resolver/AnalyseBookmark.h"
#include "resolver/ComparisonRows.h"
#include "resolver/ResolveBookmark.h"
#include "resolver/StoredAndFound.h"

namespace tolvane::resolver {

constexpr std::string_view fontSizeKey = "fontSizeRes";
constexpr const char* noAlias = "Couldn't get Alias.";

TRViewController::TRViewController(
    Key /*key*/,
    std::optional<std::string> nibName,
    const platform::Bundle* bundle,
    const ResolverSources& sources)
    : platform::ContentController(std::move(nibName), bundle)
    , sources_(sources) {}

TRViewController::TRViewController(Key /*key*/, const platform::Coder& coder, const ResolverSources& sources)
    : platform::ContentController(coder)
    , sources_(sources) {}

std::shared_ptr<TRViewController> TRViewController::initWithNibName(
    std::optional<std::string> nibName, const platform::Bundle* bundle, const ResolverSources& sources) {
    return std::make_shared<TRViewController>(Key{}, std::move(nibName), bundle, sources);
}

std::shared_ptr<TRViewController> TRViewController::initWithCoder(
    const platform::Coder& coder, const ResolverSources& sources) {
    return std::make_shared<TRViewController>(Key{}, coder, sources);
}

void TRViewController::viewDidLoad() {
    platform::ContentController::viewDidLoad();
    theFontSize_ = platform::loadFontSize(sources_.standardUserDefaults, fontSizeKey);
    if (inputTextbox.isConnected()) {
        inputTextbox->setFilesHandler(
            [this](const std::vector<platform::URL>& files) { readDroppedFiles(files); });
    }
}

void TRViewController::viewDidAppear() {
    // On purpose without the inherited operation.
    if (platform::Window* window = view().window()) {
        window->setDelegate(self());
    }
    refreshDataCheckbox->setState(platform::ButtonState::off);
}

std::function<void(platform::Sender)> TRViewController::actionForSelector(std::string_view selector) {
    static constexpr std::array<platform::NamedAction<TRViewController>, 9> actions{{
        {"analyseButton:", &TRViewController::analyseButton},
        {"resolveButton:", &TRViewController::resolveButton},
        {"revealButton:", &TRViewController::revealButton},
        {"previewButton:", &TRViewController::previewButton},
        {"compareButton:", &TRViewController::compareButton},
        {"salvageButton:", &TRViewController::salvageButton},
        {"openFileButton:", &TRViewController::openFileButton},
        {"incFontSize:", &TRViewController::incFontSize},
        {"decFontSize:", &TRViewController::decFontSize},
    }};
    return platform::actionIn(actions, *this, selector);
}

bool TRViewController::isActionEnabled(std::string_view selector) {
    if (selector == "revealButton:" || selector == "previewButton:") {
        return bmURL_.has_value();
    }
    if (selector == "compareButton:") {
        return resolved_.has_value();
    }
    if (selector == "salvageButton:") {
        return salvaged_.has_value();
    }
    return platform::ContentController::isActionEnabled(selector);
}

void TRViewController::analyseButton(platform::Sender /*sender*/) {
    static_cast<void>(analyseInput(notAnalysed));
}

void TRViewController::resolveButton(platform::Sender /*sender*/) {
    const std::optional<platform::Data> bookmark = analyseInput(notResolved);
    if (!bookmark) {
        return;
    }
    // The check box only sets the flag at first: a stale bookmark is not made anew.
    const bool isStale = refreshDataCheckbox->state() != platform::ButtonState::off;
    BookmarkResolution resolution =
        resolveBookmark(*bookmark, isStale, sources_.bookmarks, sources_.fileManager);
    if (!resolution.resolved) {
        setStatus(resolution.resolved.error().localizedDescription());
    } else if (resolution.attributesFailure) {
        setStatus(resolution.attributesFailure->localizedDescription());
    }
    // Kept whatever failed afterwards, so that an item whose attributes cannot be read can still be revealed.
    const bool isFound = resolution.resolved && resolution.resolved->url;
    if (isFound) {
        bmURL_ = resolution.resolved->url;
    }
    showPath(
        std::move(resolution.filePath),
        isFound && !resolution.attributesFailure
            ? std::optional(Resolved{*bookmark, *std::move(resolution.resolved)})
            : std::nullopt);
}

void TRViewController::showPath(std::string text, std::optional<Resolved> resolved) {
    resolved_ = std::move(resolved);
    filePathTextbox->setStringValue(std::move(text));
    if (isComparing_) {
        showComparison();
    }
}

void TRViewController::compareButton(platform::Sender /*sender*/) {
    if (!resolved_) {
        return;
    }
    isComparing_ = !isComparing_;
    showComparison();
}

void TRViewController::showComparison() {
    if (!isComparing_ || !resolved_) {
        filePathTextbox->setNote({});
        comparisonTable->setRows(nullptr);
        return;
    }
    auto compared =
        storedAndFound(resolved_->bookmark, resolved_->found, sources_.bookmarks, sources_.compareFacts);
    if (compared.failure) {
        setStatus(itemNotComparedText(*compared.failure));
    }
    filePathTextbox->setNote(howFoundText(resolved_->found.match));
    comparisonTable->setRows(std::make_shared<ComparisonRows>(std::move(compared.facts)));
}

void TRViewController::salvageButton(platform::Sender /*sender*/) {
    if (analyseInput(notAnalysed) && salvaged_) {
        showOutput(*salvaged_);
    }
}

std::string TRViewController::cleanInput() {
    std::string text = cleanedBookmarkText(inputTextbox->string());
    setInput(text);
    return text;
}

std::optional<platform::Data> TRViewController::analyseInput(std::string_view failureMessage) {
    setStatus({});
    salvaged_.reset();
    auto bookmark = decodedBookmark(cleanInput());
    if (!bookmark) {
        setStatus(base64Reason(bookmark.error()));
        showPath(std::string(failureMessage));
        return std::nullopt;
    }
    const platform::ReadProperties read = sources_.readStoredProperties(*bookmark);
    if (read.failure) {
        setStatus(read.failure->localizedDescription());
        if (auto salvaged = sources_.salvage(*bookmark)) {
            salvaged_ = *std::move(salvaged);
        }
    }
    showOutput(bookmarkAnalysis(read.properties));
    return *std::move(bookmark);
}

void TRViewController::revealButton(platform::Sender /*sender*/) {
    if (!bmURL_) {
        return;
    }
    if (const auto script = sources_.appleScripts.initWithSource(revealScript(bmURL_->path()))) {
        static_cast<void>(script->executeAndReturnError());
    }
}

void TRViewController::previewButton(platform::Sender /*sender*/) {
    if (!bmURL_) {
        return;
    }
    filePathTextbox->selectText(this);
    const std::shared_ptr<platform::PreviewPanel> panel = sources_.previewPanels.sharedPreviewPanel();
    if (!panel) {
        return;
    }
    panel->setDelegate(self());
    panel->setDataSource(self());
    panel->makeKeyAndOrderFront(this);
}

platform::URL TRViewController::previewPanel(const platform::PreviewPanel& /*panel*/, std::size_t /*index*/) {
    if (!bmURL_) {
        platform::fatalError("a preview is asked for before a bookmark was resolved");
    }
    return *bmURL_;
}

void TRViewController::openFileButton(platform::Sender /*sender*/) {
    const std::shared_ptr<platform::OpenPanel> panel = sources_.openPanels.openPanel();
    panel->setAllowsMultipleSelection(false);
    panel->setCanChooseDirectories(true);
    panel->setShowsHiddenFiles(true);
    panel->setTreatsFilePackagesAsDirectories(true);
    // The alias file itself is wanted, for what it holds.
    panel->setResolvesAliases(false);
    panel->beginSheetModalForWindow(requireWindow(), [panel, controller = self()](int response) {
        if (response != platform::modalResponseOK) {
            return;
        }
        if (const std::optional<platform::URL> chosen = panel->chosenURL()) {
            controller->readBookmark(*chosen);
        }
    });
}

void TRViewController::readDroppedFiles(const std::vector<platform::URL>& files) {
    if (files.size() == 1) {
        readBookmark(files.front());
    } else {
        setStatus("Drop one file at a time: only one bookmark fits here.");
    }
}

void TRViewController::readBookmark(const platform::URL& aliasFile) {
    const auto bookmark = sources_.bookmarks.bookmarkDataWithContentsOfURL(aliasFile);
    if (!bookmark) {
        setStatus(bookmark.error().localizedDescription());
        inputTextbox->setString(noAlias);
        return;
    }
    showBookmark(*bookmark);
}

void TRViewController::showBookmark(std::span<const std::byte> bookmark) {
    setInput(platform::base64EncodedString(bookmark));
    analyseButton(this);
}

void TRViewController::setFontSize(double size) {
    theFontSize_ = size;
    sources_.standardUserDefaults.setDouble(size, fontSizeKey);
    restyleOutput();
}

void TRViewController::setInput(std::string text) {
    if (platform::TextStorage* storage = inputTextbox->textStorage()) {
        storage->setAttributedString({std::move(text), {platform::Color::textColor, {}}});
    }
}

void TRViewController::showOutput(std::string text) {
    if (platform::TextStorage* storage = outputTextbox->textStorage()) {
        storage->setAttributedString({std::move(text), platform::outputStyle(theFontSize_)});
    }
}

void TRViewController::setStatus(std::string status) const {
    if (platform::Window* window = view().window()) {
        window->setStatus(std::move(status));
    }
}

platform::Window& TRViewController::requireWindow() const {
    platform::Window* window = view().window();
    if (window == nullptr) {
        platform::fatalError("the resolver view is in no window");
    }
    return *window;
}

} // namespace tolvane::resolver
