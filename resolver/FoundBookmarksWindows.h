#pragma once

#include "platform/model/ActionTarget.h"
#include "platform/model/Observers.h"
#include "platform/model/Storyboard.h"
#include "platform/model/WindowController.h"
#include "platform/values/URL.h"

#include <functional>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::resolver {

/// The windows of found bookmarks, one for each file that was searched. A window is released when it is
/// closed.
class FoundBookmarksWindows final : public platform::ActionTarget {
public:
    using FilesHandler = std::function<void(const std::vector<platform::URL>& files)>;

    /// The bundle's storyboard "Main" has the scene "Found Bookmarks Window"; `chooseFiles` lets the user
    /// choose files and passes them on, also none.
    FoundBookmarksWindows(const platform::Bundle& bundle, std::function<void(FilesHandler)> chooseFiles)
        : bundle_(bundle)
        , chooseFiles_(std::move(chooseFiles)) {}

    /// Lets the user choose files, and searches them.
    void findBookmarks(platform::Sender sender);

    /// Opens a window for each file.
    void searchIn(const std::vector<platform::URL>& files);

    std::function<void(platform::Sender)> actionForSelector(std::string_view selector) override;

    std::size_t count() const { return windows_.size(); }

private:
    struct Shown {
        std::shared_ptr<platform::WindowController> controller;
        platform::Subscription closing;
    };

    void release(const platform::Window& window);

    const platform::Bundle& bundle_;
    std::function<void(FilesHandler)> chooseFiles_;
    std::vector<Shown> windows_;
};

} // namespace tolvane::resolver
