#pragma once

#include "resolver/FoundBookmarksController.h"
#include "resolver/FoundBookmarksWindows.h"
#include "tests/support/MemoryFileContents.h"
#include "tests/support/MemorySavePanel.h"
#include "tests/support/MemoryStoryboard.h"
#include "tests/support/ScriptedSources.h"
#include "tests/support/WaitingTasks.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {

/// The scripted services of windows of found bookmarks, and the windows.
class FoundBookmarksWindow {
public:
    FoundBookmarksWindow() {
        bundle.storyboard("Main").addWindowScene(
            "Found Bookmarks Window", [this](const platform::Coder& coder) {
                auto made = std::make_shared<resolver::FoundBookmarksController>(coder, sources());
                newest = made;
                return made;
            });
    }

    resolver::FoundBookmarksSources sources() {
        return {contents,
                attributes,
                [](std::string_view text) { return std::optional<std::string>(text); },
                bookmarks,
                tasks,
                savePanels,
                textFiles,
                session,
                [this](const platform::Data& bookmark) { shownInResolver.push_back(bookmark); }};
    }

    /// Opens a window for a file and searches that.
    void search(const std::string& path) {
        windows.searchIn({platform::URL::fileURLWithPath(path)});
        tasks.workAndDeliver();
    }

    resolver::FoundBookmarksController& controller() const { return *newest.lock(); }
    platform::Window& window() const { return *controller().view().window(); }

    CallLog log;
    CallLog attributeLog;
    std::map<std::string, std::string> files;
    std::shared_ptr<MemoryFileContents> contents = std::make_shared<MemoryFileContents>(files);
    std::shared_ptr<ScriptedExtendedAttributes> attributes =
        std::make_shared<ScriptedExtendedAttributes>(attributeLog);
    std::shared_ptr<ScriptedBookmarks> bookmarks = std::make_shared<ScriptedBookmarks>(log);
    WaitingTasks tasks;
    platform::MemorySavePanels savePanels;
    ScriptedTextFiles textFiles;
    ScriptedSession session;
    std::vector<platform::Data> shownInResolver;
    platform::MemoryBundle bundle;
    std::weak_ptr<resolver::FoundBookmarksController> newest;
    resolver::FoundBookmarksWindows::FilesHandler chosen;
    resolver::FoundBookmarksWindows windows{
        bundle,
        [this](resolver::FoundBookmarksWindows::FilesHandler handler) { chosen = std::move(handler); }};
};

} // namespace tolvane::tests
