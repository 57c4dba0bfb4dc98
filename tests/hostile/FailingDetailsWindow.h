#pragma once

#include "details/ViewController.h"
#include "inspect/Document.h"
#include "platform/memory/MemoryDocumentController.h"
#include "tests/end_to_end/ReportText.h"
#include "tests/hostile/FailingSources.h"
#include "tests/support/DetailsWindow.h"

#include <memory>

namespace tolvane::tests {

/// The scripted document of `DetailsWindow`, opened by the document machinery over sources that fail when a
/// test says so.
class FailingDetailsWindow {
public:
    FailingDetailsWindow();

    /// Opens the document as a user does. Fails where no document comes of it.
    platform::Result<void> open();

    details::ViewController& controller() const { return *controller_; }

    /// Hides the window and shows it again, which is an appearance.
    void showAgain() const;

    /// Saves to this path, as a user does who chooses it in the panel.
    void save(const std::string& path);

    /// The text of every field by its name, and whether a date was kept under "date".
    Fields texts() const;

    /// What `texts` are when nothing fails.
    static Fields undisturbedTexts();

    /// What every source answers while it does not fail.
    DetailsWindow scripted;
    CallCounter calls;
    FailingURLResources resources{scripted.resources, calls};

private:
    FailingExtendedAttributes attributes_{scripted.attributes, calls};
    FailingFileManager fileManager_{scripted.fileManager, calls};
    FailingBookmarks bookmarks_{scripted.bookmarks, calls};
    CountedSession session_{scripted.session, calls};
    FailingTextFiles textFiles_{scripted.textFiles, calls};
    FailingPasteboard pasteboard_{scripted.pasteboard, calls};
    platform::MemoryBundle bundle_;
    platform::MemoryDocumentController documents_;
    std::shared_ptr<platform::Document> document_;
    std::shared_ptr<details::ViewController> controller_;
};

} // namespace tolvane::tests
