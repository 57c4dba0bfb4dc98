#include "resolver/FoundBookmarksWindows.h"

#include "resolver/FoundBookmarksController.h"

#include <array>

namespace tolvane::resolver {

void FoundBookmarksWindows::findBookmarks(platform::Sender /*sender*/) {
    chooseFiles_([this](const std::vector<platform::URL>& files) { searchIn(files); });
}

void FoundBookmarksWindows::searchIn(const std::vector<platform::URL>& files) {
    for (const platform::URL& file : files) {
        auto controller = platform::windowControllerOfScene(bundle_, "Found Bookmarks Window");
        platform::Window& window = *controller->window();
        windows_.push_back({controller, window.observeWillClose([this, &window] { release(window); })});
        controller->showWindow();
        if (auto* const content =
                dynamic_cast<FoundBookmarksController*>(controller->contentViewController().get())) {
            content->searchIn(file);
        }
    }
}

std::function<void(platform::Sender)> FoundBookmarksWindows::actionForSelector(std::string_view selector) {
    static constexpr std::array<platform::NamedAction<FoundBookmarksWindows>, 1> actions{{
        {"findBookmarks:", &FoundBookmarksWindows::findBookmarks},
    }};
    return platform::actionIn(actions, *this, selector);
}

void FoundBookmarksWindows::release(const platform::Window& window) {
    std::erase_if(
        windows_, [&window](const Shown& shown) { return shown.controller->window().get() == &window; });
}

} // namespace tolvane::resolver
