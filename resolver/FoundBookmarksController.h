#pragma once

#include "containers/FindBookmarks.h"
#include "platform/model/ActionTarget.h"
#include "platform/model/ContentController.h"
#include "platform/model/Controls.h"
#include "platform/model/Outlet.h"
#include "platform/model/ProgressIndicator.h"
#include "platform/model/Table.h"
#include "platform/services/BackgroundTasks.h"
#include "platform/services/Bookmarks.h"
#include "platform/services/ExtendedAttributeCalls.h"
#include "platform/services/FileContents.h"
#include "platform/services/Panels.h"
#include "platform/services/TextFiles.h"
#include "platform/services/UserSession.h"
#include "resolver/FindingRows.h"
#include "resolver/FindingsWork.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::resolver {

/// What the window of found bookmarks needs of the platform. The referenced objects outlive its controllers;
/// tasks may outlive both, so they share what they use.
struct FoundBookmarksSources {
    std::shared_ptr<const platform::FileContents> contents;
    std::shared_ptr<const platform::ExtendedAttributeCalls> extendedAttributes;
    /// In which names are compared. Asked on other threads.
    containers::ComposedText composedText;
    std::shared_ptr<const platform::Bookmarks> bookmarks;
    platform::BackgroundTasks& tasks;
    platform::SavePanels& savePanels;
    const platform::TextFiles& textFiles;
    const platform::UserSession& session;

    /// Shows bookmark data in a new resolver window, analysed.
    std::function<void(const platform::Data& bookmark)> showInResolver;
};

/// Controls the window that lists every bookmark in a file: a table that can be ordered and filtered, and all
/// that the selected finding says. A finding can be opened in a resolver window, all of them resolved, and
/// all of them exported. The file is only read, and nothing that it names is looked at before the user
/// resolves.
class FoundBookmarksController final : public platform::ContentController {
public:
    FoundBookmarksController(const platform::Coder& coder, FoundBookmarksSources sources)
        : platform::ContentController(coder)
        , sources_(std::move(sources)) {}

    void viewDidLoad() override;

    /// Searches the file and shows what it contains; if that is nothing, the status says why.
    void searchIn(const platform::URL& file);

    std::function<void(platform::Sender)> actionForSelector(std::string_view selector) override;
    bool isActionEnabled(std::string_view selector) override;

    /// Shows the selected finding in a resolver window. Only bookmarks and alias records can be shown there.
    void openFinding(platform::Sender sender);

    /// Resolves every bookmark and alias record that can be read, in the container's order.
    void resolveAll(platform::Sender sender);

    /// Ends resolving; what was resolved before stays.
    void stopResolving(platform::Sender sender);

    /// Both ask where to save, and write all findings in the container's order, whatever is filtered.
    void exportCSV(platform::Sender /*sender*/) { exportAs("csv"); }
    void exportJSON(platform::Sender /*sender*/) { exportAs("json"); }

    template <typename T>
    using Outlet = platform::Outlet<T>;

    /// What findings have to contain to be listed.
    Outlet<platform::TextField> filterTextbox{outletTable(), "filterTextbox"};
    /// How many there are; its note explains marks.
    Outlet<platform::TextField> summaryTextbox{outletTable(), "summaryTextbox"};
    Outlet<platform::Table> findingsTable{outletTable(), "findingsTable"};
    /// All that the selected finding says.
    Outlet<platform::TextView> detailsTextbox{outletTable(), "detailsTextbox"};
    Outlet<platform::ProgressIndicator> resolvingProgress{outletTable(), "resolvingProgress"};

private:
    std::shared_ptr<FoundBookmarksController> self() {
        return std::static_pointer_cast<FoundBookmarksController>(shared_from_this());
    }
    void show(containers::FoundBookmarks found);
    void arrange(const std::function<void()>& change);
    void showSummary();
    void showDetails();
    void takeOutcomes(Outcomes outcomes);
    void finishResolving();
    std::string outcomeSummary() const;
    void exportAs(const std::string& extension);
    void writeTo(const platform::URL& destination, bool asCsv);
    const containers::Finding* selectedFinding() const;
    void setStatus(std::string status) const;

    FoundBookmarksSources sources_;
    std::optional<platform::URL> file_;
    std::string container_; ///< Its kind.
    std::shared_ptr<FindingRows> rows_;
    platform::Subscription filterEdits_;
    platform::Subscription selections_;
    std::unique_ptr<platform::BackgroundTask> search_;
    std::unique_ptr<platform::BackgroundTask> resolving_;
};

} // namespace tolvane::resolver
