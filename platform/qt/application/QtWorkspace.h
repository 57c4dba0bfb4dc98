#pragma once

#include "platform/services/Pasteboard.h"
#include "platform/services/Workspace.h"

#include <string>

namespace tolvane::platform {

/// The desktop as Qt reaches it: the user's default program opens URLs, unchanged, without waiting.
class QtWorkspace final : public Workspace {
public:
    /// False as well for a text that is not a URL for Qt.
    bool openURL(const URL& url) override;
};

/// The desktop's clipboard. It has one plain text, exactly as given, so several are joined by line feeds. It
/// lasts until another program copies something, on many desktops not longer than this program.
class QtPasteboard final : public Pasteboard {
public:
    void clearContents() override;

    /// The texts are UTF-8. Adds to those written since the last `clearContents`.
    bool writeObjects(std::span<const std::string> texts) override;

private:
    std::string text_;
    bool holdsText_ = false;
};

} // namespace tolvane::platform
