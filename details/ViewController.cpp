#include "details/ViewController.h"

#include "details/GatherDetails.h"
#include "details/ShellWord.h"
#include "platform/model/WindowController.h"
#include "platform/values/Utf8.h"

#include <cstddef>
#include <utility>

namespace tolvane::details {

namespace {

constexpr std::string_view fontSizeKey = "fontSize";
constexpr std::string_view notExact =
    "This is not the exact name, which is not UTF-8. Edit › Copy as Shell Word copies it exactly.";

/// A one-line field and the text that it shows.
struct TextOfField {
    ViewController::Outlet<platform::TextField> ViewController::* field;
    DetailsTexts::Text DetailsTexts::* text;
};

constexpr std::array<TextOfField, 19> oneLineTexts{{
    {&ViewController::pathTextbox, &DetailsTexts::pathTextbox},
    {&ViewController::volfsPathTextbox, &DetailsTexts::volfsPathTextbox},
    {&ViewController::frURLTextbox, &DetailsTexts::frURLTextbox},
    {&ViewController::urlTotalSize, &DetailsTexts::urlTotalSize},
    {&ViewController::urlDataSize, &DetailsTexts::urlDataSize},
    {&ViewController::xattrSize, &DetailsTexts::xattrSize},
    {&ViewController::filemanSize, &DetailsTexts::filemanSize},
    {&ViewController::urlXattrSize, &DetailsTexts::urlXattrSize},
    {&ViewController::filemanTotalSize, &DetailsTexts::filemanTotalSize},
    {&ViewController::permsTextbox, &DetailsTexts::permsTextbox},
    {&ViewController::ownerNameTextbox, &DetailsTexts::ownerNameTextbox},
    {&ViewController::ownerIDTextbox, &DetailsTexts::ownerIDTextbox},
    {&ViewController::groupNameTextbox, &DetailsTexts::groupNameTextbox},
    {&ViewController::groupIDTextbox, &DetailsTexts::groupIDTextbox},
    {&ViewController::createdTextbox, &DetailsTexts::createdTextbox},
    {&ViewController::modifiedTextbox, &DetailsTexts::modifiedTextbox},
    {&ViewController::typeTextbox, &DetailsTexts::typeTextbox},
    {&ViewController::refCountTextbox, &DetailsTexts::refCountTextbox},
    {&ViewController::bookmarkPathTextbox, &DetailsTexts::bookmarkPathTextbox},
}};

/// The document of the window's controller; null if there is none, fatal if of another class.
std::shared_ptr<inspect::Document> documentOf(const platform::Window* window) {
    const auto controller = window != nullptr ? window->windowController() : nullptr;
    const auto document = controller ? controller->document() : nullptr;
    if (!document) {
        return nullptr;
    }
    auto inspected = std::dynamic_pointer_cast<inspect::Document>(document);
    if (!inspected) {
        platform::fatalError("the details window's document is of the wrong class");
    }
    return inspected;
}

} // namespace

ViewController::ViewController(
    Key /*key*/,
    std::optional<std::string> nibName,
    const platform::Bundle* bundle,
    const DetailsSources& sources)
    : platform::ContentController(std::move(nibName), bundle)
    , sources_(sources) {}

ViewController::ViewController(Key /*key*/, const platform::Coder& coder, const DetailsSources& sources)
    : platform::ContentController(coder)
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
    platform::ContentController::viewDidLoad();
    theFontSize_ = platform::loadFontSize(sources_.standardUserDefaults, fontSizeKey);
    initialTexts_ = currentTexts();
    if (wordsTable.isConnected()) {
        words_ = std::make_unique<AttributeWords>(
            AttributeWords::Controls{*wordsTable, *wordsText, *attributesInWords, *wordsWithBytes},
            sources_.words, sources_.standardUserDefaults);
    }
    if (platform::Window* window = view().window()) {
        attention_ = window->observeBecomeKey([this] { lookForChange(); });
    }
}

ViewController::InitialTexts ViewController::currentTexts() const {
    InitialTexts texts;
    for (std::size_t i = 0; i < oneLineTexts.size(); ++i) {
        if (const auto& field = this->*oneLineTexts.at(i).field; field.isConnected()) {
            texts.fields.at(i) = field->stringValue();
        }
    }
    const auto contentOf = [](const Outlet<platform::TextView>& view) {
        const platform::TextStorage* const storage = view.isConnected() ? view->textStorage() : nullptr;
        return storage != nullptr ? storage->attributedString() : platform::AttributedString();
    };
    texts.inodeText = contentOf(inodeText);
    texts.bookmarkTextbox = contentOf(bookmarkTextbox);
    return texts;
}

void ViewController::gatherDetails() {
    gather(Earlier::kept);
}

std::shared_ptr<inspect::Document> ViewController::shownDocument() const {
    auto document = documentOf(view().window());
    return document && !document->theSizes().empty() ? document : nullptr;
}

void ViewController::gather(Earlier earlier) {
    if (platform::Window* window = view().window()) {
        window->setDelegate(self());
    }
    saveString_.clear();

    const std::shared_ptr<inspect::Document> document = shownDocument();
    if (!document) {
        return;
    }
    const std::shared_ptr<const inspect::SizeData> sizes = document->theSizes().front();
    const GatheredDetails gathered =
        details::gatherDetails(*sizes, {sources_.resources, sources_.bookmarks, sources_.session});
    show(gathered.texts, earlier);
    pathTextbox->setNote(platform::isValidUtf8(sizes->url().path()) ? "" : std::string(notExact));
    theDate_ = gathered.gathered;
    if (words_) {
        words_->setItem(sizes->url(), sizes->inode(), theFontSize_);
    }
}

void ViewController::show(const DetailsTexts& texts, Earlier earlier) {
    const bool forgets = earlier == Earlier::forgotten;
    for (std::size_t i = 0; i < oneLineTexts.size(); ++i) {
        const auto& [field, text] = oneLineTexts.at(i);
        if (texts.*text) {
            (this->*field)->setStringValue(*(texts.*text));
        } else if (forgets) {
            (this->*field)->setStringValue(initialTexts_.fields.at(i));
        }
    }
    if (forgets) {
        if (platform::TextStorage* storage = inodeText->textStorage()) {
            // In one step, so that a view which shows the same again stays where it is.
            platform::AttributedString attributes = initialTexts_.inodeText;
            attributes.append({texts.inodeText.value_or(""), platform::outputStyle(theFontSize_)});
            storage->setAttributedString(std::move(attributes));
        }
    } else if (texts.inodeText) {
        appendXattrLine(*texts.inodeText);
    }
    platform::TextStorage* storage = bookmarkTextbox->textStorage();
    if (storage != nullptr && texts.bookmarkTextbox) {
        // No font: the bookmark's text does not follow the text size.
        storage->setAttributedString({*texts.bookmarkTextbox, {platform::Color::textColor, {}}});
    } else if (storage != nullptr && forgets) {
        storage->setAttributedString(initialTexts_.bookmarkTextbox);
    }
}

void ViewController::copyShellWord(platform::Sender /*sender*/) {
    if (const std::shared_ptr<inspect::Document> document = shownDocument()) {
        putOnPasteboard(shellWord(document->theSizes().front()->url().path()));
    }
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

void ViewController::setFontSize(double size) {
    theFontSize_ = size;
    sources_.standardUserDefaults.setDouble(size, fontSizeKey);
    restyleXattrText();
    if (words_) {
        words_->setFontSize(size);
    }
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

    const std::shared_ptr<platform::SavePanel> panel = sources_.savePanels.savePanel();
    panel->setCanCreateDirectories(true);
    panel->setAllowedFileTypes({"text", "txt"});
    panel->setDirectoryURL(std::move(homeFolder));
    panel->setNameFieldStringValue(reportFileName(title));
    if (const std::shared_ptr<inspect::Document> document = shownDocument()) {
        panel->setSubject(document->theSizes().front()->url());
    }
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
    isReportLost_ = !written;
    showStatus();
    if (!written) {
        appendXattrLine(written.error().localizedDescription());
        inodeText->scrollToEndOfDocument(this);
    }
}

ReportFields ViewController::reportFields() const {
    ReportFields report;
    report.windowTitle = requireWindow().title();
    for (const auto& [field, text] : oneLineTexts) {
        report.texts.*text = (this->*field)->stringValue();
    }
    report.texts.bookmarkTextbox = bookmarkTextbox->string();
    report.texts.inodeText = inodeText->string();
    if (theDate_) {
        report.date = sources_.session.describeForLocale(*theDate_);
    }
    return report;
}

platform::Window& ViewController::requireWindow() const {
    platform::Window* window = view().window();
    if (window == nullptr) {
        platform::fatalError("the details view is in no window");
    }
    return *window;
}

} // namespace tolvane::details
