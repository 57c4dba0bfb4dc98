#include "details/ViewController.h"

#include "platform/FatalError.h"
#include "platform/TextSize.h"

#include <span>
#include <utility>

namespace tolvane::details {

namespace {

constexpr std::string_view fontSizeKey = "fontSize";

} // namespace

ViewController::ViewController(
    Key /*key*/,
    std::optional<std::string> nibName,
    const platform::Bundle* bundle,
    const DetailsSources& sources)
    : platform::ViewController(std::move(nibName), bundle)
    , sources_(sources) {}

ViewController::ViewController(Key /*key*/, const platform::Coder& coder, const DetailsSources& sources)
    : platform::ViewController(coder)
    , sources_(sources) {}

std::shared_ptr<ViewController> ViewController::initWithNibName(
    std::optional<std::string> nibName, const platform::Bundle* bundle, const DetailsSources& sources) {
    return std::make_shared<ViewController>(Key{}, std::move(nibName), bundle, sources);
}

std::shared_ptr<ViewController> ViewController::initWithCoder(
    const platform::Coder& coder, const DetailsSources& sources) {
    return std::make_shared<ViewController>(Key{}, coder, sources);
}

void ViewController::viewDidLoad() {
    platform::ViewController::viewDidLoad();
    theFontSize_ = platform::loadFontSize(sources_.standardUserDefaults, fontSizeKey);
}

void ViewController::viewDidAppear() {
    gatherDetails();
}

const std::any& ViewController::representedObject() const {
    return platform::ViewController::representedObject();
}

void ViewController::setRepresentedObject(std::any object) {
    platform::ViewController::setRepresentedObject(std::move(object));
}

void ViewController::copyPath(platform::Sender /*sender*/) {
    copyFieldText(pathTextbox);
}

void ViewController::copyVolfs(platform::Sender /*sender*/) {
    copyFieldText(volfsPathTextbox);
}

void ViewController::copyFrefURL(platform::Sender /*sender*/) {
    copyFieldText(frURLTextbox);
}

void ViewController::copyPerms(platform::Sender /*sender*/) {
    copyFieldText(permsTextbox);
}

void ViewController::copyBookmark(platform::Sender /*sender*/) {
    copyTextViewText(bookmarkTextbox);
}

void ViewController::copyXattrs(platform::Sender /*sender*/) {
    copyTextViewText(inodeText);
}

void ViewController::copyFieldText(const Outlet<platform::TextField>& field) {
    putOnPasteboard(field->stringValue());
}

void ViewController::copyTextViewText(const Outlet<platform::TextView>& view) {
    const platform::TextStorage* storage = view->textStorage();
    if (storage == nullptr) {
        platform::fatalError("a text view to be copied has no text storage");
    }
    putOnPasteboard(storage->string());
}

void ViewController::putOnPasteboard(const std::string& text) {
    if (text.empty()) {
        return;
    }
    sources_.generalPasteboard.clearContents();
    sources_.generalPasteboard.writeObjects(std::span(&text, 1));
}

void ViewController::incFontSize(platform::Sender /*sender*/) {
    setFontSize(platform::largerFontSize(theFontSize_));
}

void ViewController::decFontSize(platform::Sender /*sender*/) {
    setFontSize(platform::smallerFontSize(theFontSize_));
}

void ViewController::setFontSize(double size) {
    theFontSize_ = size;
    sources_.standardUserDefaults.setDouble(size, fontSizeKey);
    restyleXattrText();
}

void ViewController::appendXattrLine(std::string_view text) {
    if (platform::TextStorage* storage = inodeText->textStorage()) {
        storage->appendAttributedString({std::string(text), platform::outputStyle(theFontSize_)});
    }
}

void ViewController::restyleXattrText() {
    if (platform::TextStorage* storage = inodeText->textStorage()) {
        storage->setAttributedString({storage->string(), platform::outputStyle(theFontSize_)});
    }
}

void ViewController::saveCommand(platform::Sender /*sender*/) {
    platform::URL homeFolder = sources_.session.homeDirectory();
    const std::string& title = requireWindow().title();
    const std::string name = title.empty() ? "Untitled" : title;

    const std::shared_ptr<platform::SavePanel> panel = sources_.savePanels.savePanel();
    panel->setCanCreateDirectories(true);
    panel->setAllowedFileTypes({"text", "txt"});
    panel->setDirectoryURL(std::move(homeFolder));
    panel->setNameFieldStringValue(name + "-tolvane.text");
    panel->beginWithCompletionHandler([panel, controller = self()](int response) {
        if (response != platform::modalResponseOK) {
            return;
        }
        if (const std::optional<platform::URL> destination = panel->chosenURL()) {
            controller->writeReport(*destination);
        }
    });
}

void ViewController::writeReport(const platform::URL& destination) {
    buildReport();
    const auto written = sources_.textFiles.writeInPlace(saveString_, destination);
    if (!written) {
        appendXattrLine(written.error().localizedDescription());
    }
}

void ViewController::buildReport() {
    saveString_ = reportText(reportFields());
}

ReportFields ViewController::reportFields() const {
    return {
        .windowTitle = requireWindow().title(),
        .pathTextbox = pathTextbox->stringValue(),
        .volfsPathTextbox = volfsPathTextbox->stringValue(),
        .frURLTextbox = frURLTextbox->stringValue(),
        .urlDataSize = urlDataSize->stringValue(),
        .urlXattrSize = urlXattrSize->stringValue(),
        .urlTotalSize = urlTotalSize->stringValue(),
        .filemanSize = filemanSize->stringValue(),
        .xattrSize = xattrSize->stringValue(),
        .filemanTotalSize = filemanTotalSize->stringValue(),
        .permsTextbox = permsTextbox->stringValue(),
        .ownerNameTextbox = ownerNameTextbox->stringValue(),
        .ownerIDTextbox = ownerIDTextbox->stringValue(),
        .groupNameTextbox = groupNameTextbox->stringValue(),
        .groupIDTextbox = groupIDTextbox->stringValue(),
        .createdTextbox = createdTextbox->stringValue(),
        .modifiedTextbox = modifiedTextbox->stringValue(),
        .typeTextbox = typeTextbox->stringValue(),
        .refCountTextbox = refCountTextbox->stringValue(),
        .bookmarkTextbox = bookmarkTextbox->string(),
        .bookmarkPathTextbox = bookmarkPathTextbox->stringValue(),
        .inodeText = inodeText->string(),
        .date = theDate_ ? std::optional(sources_.session.describeForLocale(*theDate_)) : std::nullopt,
    };
}

std::shared_ptr<ViewController> ViewController::self() {
    return std::static_pointer_cast<ViewController>(shared_from_this());
}

platform::Window& ViewController::requireWindow() const {
    platform::Window* window = view().window();
    if (window == nullptr) {
        platform::fatalError("the details view is in no window");
    }
    return *window;
}

} // namespace tolvane::details
