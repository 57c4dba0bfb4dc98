#pragma once

#include "platform/services/Pasteboard.h"

#include <string>

namespace tolvane::platform {

/// The desktop's clipboard. It holds one text, so several are joined by line feeds, and nothing but plain
/// text, exactly as given. What this program wrote stays until another copies something, and on many desktops
/// no longer than this program runs.
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
