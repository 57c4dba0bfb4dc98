#pragma once

#include "platform/model/ActionTarget.h"
#include "platform/model/ContentController.h"
#include "platform/model/Controls.h"
#include "platform/model/Outlet.h"
#include "platform/model/Table.h"
#include "platform/model/Window.h"
#include "platform/services/AppleScript.h"
#include "platform/services/Bookmarks.h"
#include "platform/services/FileManager.h"
#include "platform/services/Panels.h"
#include "platform/services/PreviewPanel.h"
#include "platform/services/TextSize.h"
#include "platform/services/UserDefaults.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::resolver {

/// What the resolver window needs of the platform. The referenced objects outlive its controllers.
struct ResolverSources {
    const platform::Bookmarks& bookmarks;
    platform::StoredPropertiesReader readStoredProperties;
    const platform::FileManager& fileManager;
    platform::OpenPanels& openPanels;
    platform::AppleScripts& appleScripts;
    platform::PreviewPanels& previewPanels;
    platform::UserDefaults& standardUserDefaults;
    platform::BookmarkComparer compareFacts;
    platform::BookmarkSalvager salvage;
};

/// Controls the resolver window, which shows what a bookmark stores and where it leads.
///
/// The user enters base-64 text or chooses an alias file. Analysing shows what the bookmark stores; resolving
/// also shows where its item is now. The item found last can be revealed and previewed, even if another
/// bookmark could not be resolved. When something fails, the window's status has the reason, until the next
/// action.
///
/// On request it compares what a bookmark stores with the item that the path field shows, and shows what is
/// whole of a bookmark that cannot be read.
class TRViewController final : public platform::ContentController,
                               public platform::WindowDelegate,
                               public platform::PreviewPanelDataSource,
                               public platform::PreviewPanelDelegate {
    /// Makes the constructors usable by the two factories alone.
    struct Key {};

public:
    static std::shared_ptr<TRViewController> initWithNibName(
        std::optional<std::string> nibName, const platform::Bundle* bundle, const ResolverSources& sources);
    static std::shared_ptr<TRViewController> initWithCoder(
        const platform::Coder& coder, const ResolverSources& sources);

    /// Loads the text size from the user's settings. From then on the input box takes dropped files.
    void viewDidLoad() override;

    /// Becomes the delegate of the window and clears the check box, on every appearance.
    void viewDidAppear() override;

    std::function<void(platform::Sender)> actionForSelector(std::string_view selector) override;
    /// Revealing and previewing are not offered before an item was found, comparing only while the path field
    /// shows one, and salvaging only after an analysis of a bookmark that cannot be read as a whole.
    bool isActionEnabled(std::string_view selector) override;

    /// Shows what the bookmark in the input box stores, or a message in the path field if it is not base-64.
    void analyseButton(platform::Sender sender);

    /// Analyses, then resolves the bookmark and shows the path of its item and, where it has one, the volume
    /// path below. Anything that fails gets a message in the path field instead.
    void resolveButton(platform::Sender sender);

    /// Shows the item found last in the file manager. A failure is not reported.
    void revealButton(platform::Sender sender);

    /// Shows the item found last in the shared preview panel.
    void previewButton(platform::Sender sender);

    /// Shows or hides what the bookmark stores beside the same facts of the item in the path field, and how
    /// that was found. While it is shown, it follows the path field.
    void compareButton(platform::Sender sender);

    /// Analyses. Of a bookmark that cannot be read, the output box then shows what is whole of it and what is
    /// missing.
    void salvageButton(platform::Sender sender);

    /// Shows the open panel for an alias file; its bookmark is put into the input box and analysed.
    void openFileButton(platform::Sender sender);

    /// Puts bookmark data into the input box, as base-64, and analyses it.
    void showBookmark(std::span<const std::byte> bookmark);

    /// Takes a file that was dropped on the input box as one that was chosen. Only one at a time is read.
    void readDroppedFiles(const std::vector<platform::URL>& files);

    /// One point larger or smaller, within the bounds. The size is stored for later windows each time.
    void incFontSize(platform::Sender /*sender*/) { setFontSize(platform::largerFontSize(theFontSize_)); }
    void decFontSize(platform::Sender /*sender*/) { setFontSize(platform::smallerFontSize(theFontSize_)); }

    /// Always one.
    std::size_t numberOfPreviewItemsInPreviewPanel(const platform::PreviewPanel& /*panel*/) override {
        return 1;
    }

    /// The item found last, for every index. A fatal error when no item was found.
    platform::URL previewPanel(const platform::PreviewPanel& panel, std::size_t index) override;

    /// The text of the input box without spaces, line feeds and tabs. It replaces the box's text, in the
    /// standard colour and without a font: the input does not follow the text size.
    std::string cleanInput();

    /// Replaces the text of the output box, in the standard colour and at `theFontSize`.
    void showOutput(std::string text);

    /// Sets the text of the output box again as a whole, at the current size.
    void restyleOutput() { showOutput(outputTextbox->string()); }

    /// The item that was found last; absent until one was, and kept from then on.
    const std::optional<platform::URL>& bmURL() const { return bmURL_; }
    /// Points, for the text of the output box.
    double theFontSize() const { return theFontSize_; }

private:
    std::optional<platform::URL> bmURL_;
    double theFontSize_ = 12.0;

public:
    template <typename T>
    using Outlet = platform::Outlet<T>;

    Outlet<platform::ScrollView> inputScroller{outletTable(), "inputScroller"};
    Outlet<platform::TextView> inputTextbox{outletTable(), "inputTextbox"};
    Outlet<platform::ScrollView> outputScroller{outletTable(), "outputScroller"};
    Outlet<platform::TextView> outputTextbox{outletTable(), "outputTextbox"};
    /// The path of the item, or why there is none.
    Outlet<platform::TextField> filePathTextbox{outletTable(), "filePathTextbox"};
    Outlet<platform::Button> refreshDataCheckbox{outletTable(), "refreshDataCheckbox"};
    /// What is stored and what was found; without rows while that is not wanted. How it was found is the note
    /// of the path field.
    Outlet<platform::Table> comparisonTable{outletTable(), "comparisonTable"};

    TRViewController(
        Key,
        std::optional<std::string> nibName,
        const platform::Bundle* bundle,
        const ResolverSources& sources);
    TRViewController(Key, const platform::Coder& coder, const ResolverSources& sources);

private:
    /// A bookmark and the item that the path field shows for it.
    struct Resolved {
        platform::Data bookmark;
        platform::ResolvedBookmark found;
    };

    std::shared_ptr<TRViewController> self() {
        return std::static_pointer_cast<TRViewController>(shared_from_this());
    }
    platform::Window& requireWindow() const;
    /// Without a window there is no one to show it to.
    void setStatus(std::string status) const;

    /// Cleans and decodes the input and shows the analysis. If it is not base-64, shows the message in the
    /// path field and returns nothing.
    std::optional<platform::Data> analyseInput(std::string_view failureMessage);
    void setInput(std::string text);
    void showPath(std::string text, std::optional<Resolved> resolved = {});
    void showComparison();
    void readBookmark(const platform::URL& aliasFile);
    void setFontSize(double size);

    ResolverSources sources_;
    std::optional<Resolved> resolved_;
    bool isComparing_ = false;
    std::optional<std::string> salvaged_; ///< What is whole of the bookmark that was analysed last.
};

} // namespace tolvane::resolver
