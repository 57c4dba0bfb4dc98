#pragma once

#include "details/AttributeWords.h"
#include "details/DetailsTexts.h"
#include "details/ItemChange.h"
#include "details/Report.h"
#include "inspect/Document.h"
#include "platform/model/ActionTarget.h"
#include "platform/model/ContentController.h"
#include "platform/model/Controls.h"
#include "platform/model/Outlet.h"
#include "platform/model/Table.h"
#include "platform/model/Window.h"
#include "platform/services/Bookmarks.h"
#include "platform/services/Panels.h"
#include "platform/services/Pasteboard.h"
#include "platform/services/TextFiles.h"
#include "platform/services/TextSize.h"
#include "platform/services/URLResources.h"
#include "platform/services/UserDefaults.h"
#include "platform/services/UserSession.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tolvane::details {

/// What the details window needs of the platform. The referenced objects outlive its controllers.
struct DetailsSources {
    const platform::URLResources& resources;
    const platform::Bookmarks& bookmarks;
    const platform::UserSession& session;
    const platform::TextFiles& textFiles;
    platform::SavePanels& savePanels;
    platform::Pasteboard& generalPasteboard;
    platform::UserDefaults& standardUserDefaults;
    platform::DocumentController& documents;
    WordSources words;
};

/// The window that shows the details of one document's file.
///
/// Every appearance of the view gathers the facts anew and writes them as text into the fields; the field
/// texts are their only record. The report, the copy commands and the text size work on what the fields show.
///
/// When the user turns to the window, the item is looked at, and the window's status says if it is no longer
/// what is shown. Nothing is gathered anew for that.
class ViewController final : public platform::ContentController, public platform::WindowDelegate {
    /// Makes the constructors usable by the two factories alone.
    struct Key {};

public:
    /// Loads the text size from the user's settings. From then on the item is looked at when the user turns
    /// to the window.
    void viewDidLoad() override;

    /// Gathers the details, on every appearance.
    void viewDidAppear() override { gatherDetails(); }

    std::function<void(platform::Sender)> actionForSelector(std::string_view selector) override;
    /// Copying an empty field is not offered.
    bool isActionEnabled(std::string_view selector) override;

    /// Each copies the text of one field to the general pasteboard; an empty field leaves it unchanged.
    void copyPath(platform::Sender /*sender*/) { copyFieldText(pathTextbox); }
    void copyVolfs(platform::Sender /*sender*/) { copyFieldText(volfsPathTextbox); }
    void copyFrefURL(platform::Sender /*sender*/) { copyFieldText(frURLTextbox); }
    void copyPerms(platform::Sender /*sender*/) { copyFieldText(permsTextbox); }
    void copyBookmark(platform::Sender /*sender*/) { copyTextViewText(bookmarkTextbox); }
    void copyXattrs(platform::Sender /*sender*/) { copyTextViewText(inodeText); }

    /// Copies the path likewise, as a word that a shell reads as exactly the bytes of the path.
    void copyShellWord(platform::Sender sender);

    /// Asks where to save and returns; after OK the report of the current fields is written. If that fails,
    /// the error's description is added to the extended-attributes text, which is scrolled to it, and the
    /// window's status says so.
    void saveCommand(platform::Sender sender);

    /// Looks at the item again, as if it were closed and opened in the same window. When there is none any
    /// more, what is shown stays.
    void reload(platform::Sender sender);

    /// Reads the item's content and compares it with the checksums in its attributes, or ends that.
    void verifyChecksums(platform::Sender /*sender*/) { words_->verify(); }
    void stopVerification(platform::Sender /*sender*/) { words_->stopVerification(); }

    /// One point larger or smaller, within the bounds. The size is stored for later windows each time.
    void incFontSize(platform::Sender /*sender*/) { setFontSize(platform::largerFontSize(theFontSize_)); }
    void decFontSize(platform::Sender /*sender*/) { setFontSize(platform::smallerFontSize(theFontSize_)); }

    static std::shared_ptr<ViewController> initWithNibName(
        std::optional<std::string> nibName, const platform::Bundle* bundle, const DetailsSources& sources);
    static std::shared_ptr<ViewController> initWithCoder(
        const platform::Coder& coder, const DetailsSources& sources);

    /// Shows the document's first size record (`details::gatherDetails`) in the fields. Without window,
    /// window controller, document or record the fields stay as they are. The extended-attributes text is
    /// only added to, and fields without a new text keep theirs.
    void gatherDetails();

    /// Adds text to the extended-attributes view, in the standard colour and at `theFontSize`.
    void appendXattrLine(std::string_view text);

    /// Sets the extended-attributes text again as a whole, at the current size.
    void restyleXattrText();

    /// The texts that the report is made of, as the fields hold them now.
    ReportFields reportFields() const;

    /// Makes the report from the current fields and leaves it in `saveString`.
    void buildReport() { saveString_ = reportText(reportFields()); }

    /// The last report; emptied by every pass.
    const std::string& saveString() const { return saveString_; }
    /// When the last pass that found a size record ended.
    const std::optional<platform::Date>& theDate() const { return theDate_; }
    /// Points, for the extended-attributes text.
    double theFontSize() const { return theFontSize_; }

private:
    std::string saveString_;
    std::optional<platform::Date> theDate_;
    double theFontSize_ = 12.0;

public:
    template <typename T>
    using Outlet = platform::Outlet<T>;

    Outlet<platform::TextField> pathTextbox{outletTable(), "pathTextbox"};
    Outlet<platform::TextField> volfsPathTextbox{outletTable(), "volfsPathTextbox"};
    Outlet<platform::TextField> frURLTextbox{outletTable(), "frURLTextbox"};
    Outlet<platform::TextField> urlTotalSize{outletTable(), "urlTotalSize"};
    Outlet<platform::TextField> urlDataSize{outletTable(), "urlDataSize"};
    /// File-system metadata: the sum of the extended attributes' values.
    Outlet<platform::TextField> xattrSize{outletTable(), "xattrSize"};
    /// File-system data.
    Outlet<platform::TextField> filemanSize{outletTable(), "filemanSize"};
    /// URL-keys metadata: total less data.
    Outlet<platform::TextField> urlXattrSize{outletTable(), "urlXattrSize"};
    Outlet<platform::TextField> filemanTotalSize{outletTable(), "filemanTotalSize"};
    Outlet<platform::ScrollView> inodeScroller{outletTable(), "inodeScroller"};
    /// The extended attributes, in spite of its name.
    Outlet<platform::TextView> inodeText{outletTable(), "inodeText"};
    Outlet<platform::TextField> permsTextbox{outletTable(), "permsTextbox"};
    Outlet<platform::TextField> ownerNameTextbox{outletTable(), "ownerNameTextbox"};
    Outlet<platform::TextField> ownerIDTextbox{outletTable(), "ownerIDTextbox"};
    Outlet<platform::TextField> groupNameTextbox{outletTable(), "groupNameTextbox"};
    Outlet<platform::TextField> groupIDTextbox{outletTable(), "groupIDTextbox"};
    Outlet<platform::TextField> createdTextbox{outletTable(), "createdTextbox"};
    Outlet<platform::TextField> modifiedTextbox{outletTable(), "modifiedTextbox"};
    Outlet<platform::TextField> typeTextbox{outletTable(), "typeTextbox"};
    Outlet<platform::TextField> refCountTextbox{outletTable(), "refCountTextbox"};
    Outlet<platform::ScrollView> bookmarkScroller{outletTable(), "bookmarkScroller"};
    Outlet<platform::TextView> bookmarkTextbox{outletTable(), "bookmarkTextbox"};
    Outlet<platform::TextField> bookmarkPathTextbox{outletTable(), "bookmarkPathTextbox"};
    /// The attributes in words: whether they are shown, the table of them, and all that the selected one
    /// says.
    Outlet<platform::Button> attributesInWords{outletTable(), "attributesInWords"};
    Outlet<platform::Table> wordsTable{outletTable(), "wordsTable"};
    Outlet<platform::TextView> wordsText{outletTable(), "wordsText"};
    Outlet<platform::Button> wordsWithBytes{outletTable(), "wordsWithBytes"};

    ViewController(
        Key,
        std::optional<std::string> nibName,
        const platform::Bundle* bundle,
        const DetailsSources& sources);
    ViewController(Key, const platform::Coder& coder, const DetailsSources& sources);

private:
    /// What becomes of the texts of earlier passes.
    enum class Earlier { kept, forgotten };

    /// What the fields held before the first pass.
    struct InitialTexts {
        std::array<std::string, DetailsTexts::all.size()> fields;
        platform::AttributedString inodeText;
        platform::AttributedString bookmarkTextbox;
    };

    std::shared_ptr<ViewController> self() {
        return std::static_pointer_cast<ViewController>(shared_from_this());
    }
    platform::Window& requireWindow() const;
    /// Null where no document with a record can be reached.
    std::shared_ptr<inspect::Document> shownDocument() const;

    InitialTexts currentTexts() const;
    void gather(Earlier earlier);
    void show(const DetailsTexts& texts, Earlier earlier);
    void lookForChange();
    void showStatus();
    void writeReport(const platform::URL& destination);
    void copyFieldText(const Outlet<platform::TextField>& field) { putOnPasteboard(field->stringValue()); }
    void copyTextViewText(const Outlet<platform::TextView>& view);
    void putOnPasteboard(const std::string& text);
    void setFontSize(double size);

    DetailsSources sources_;
    InitialTexts initialTexts_;
    ItemChange change_ = ItemChange::none;
    bool isReportLost_ = false;
    std::unique_ptr<AttributeWords> words_;
    platform::Subscription attention_;
};

} // namespace tolvane::details
