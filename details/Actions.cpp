#include "details/ViewController.h"

#include <algorithm>
#include <array>

/// The details window's actions, as menu items and buttons name them.
namespace tolvane::details {

std::function<void(platform::Sender)> ViewController::actionForSelector(std::string_view selector) {
    static constexpr std::array<platform::NamedAction<ViewController>, 13> actions{{
        {"copyPath:", &ViewController::copyPath},
        {"copyShellWord:", &ViewController::copyShellWord},
        {"copyVolfs:", &ViewController::copyVolfs},
        {"copyFrefURL:", &ViewController::copyFrefURL},
        {"copyPerms:", &ViewController::copyPerms},
        {"copyBookmark:", &ViewController::copyBookmark},
        {"copyXattrs:", &ViewController::copyXattrs},
        {"saveCommand:", &ViewController::saveCommand},
        {"reload:", &ViewController::reload},
        {"verifyChecksums:", &ViewController::verifyChecksums},
        {"stopVerification:", &ViewController::stopVerification},
        {"incFontSize:", &ViewController::incFontSize},
        {"decFontSize:", &ViewController::decFontSize},
    }};
    return platform::actionIn(actions, *this, selector);
}

bool ViewController::isActionEnabled(std::string_view selector) {
    struct Copied {
        std::string_view selector;
        bool empty;
    };
    const std::array<Copied, 7> copied{{
        {"copyPath:", pathTextbox->stringValue().empty()},
        {"copyShellWord:", pathTextbox->stringValue().empty()},
        {"copyVolfs:", volfsPathTextbox->stringValue().empty()},
        {"copyFrefURL:", frURLTextbox->stringValue().empty()},
        {"copyPerms:", permsTextbox->stringValue().empty()},
        {"copyBookmark:", bookmarkTextbox->string().empty()},
        {"copyXattrs:", inodeText->string().empty()},
    }};
    if (selector == "verifyChecksums:") {
        return words_ && words_->canVerify();
    }
    if (selector == "stopVerification:") {
        return words_ && words_->isVerifying();
    }
    const auto copy = std::ranges::find(copied, selector, &Copied::selector);
    return copy == copied.end() ? platform::ContentController::isActionEnabled(selector) : !copy->empty;
}

} // namespace tolvane::details
