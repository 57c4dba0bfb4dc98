#pragma once

#include "platform/ModalResponse.h"
#include "platform/URL.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {

/// A free-standing panel in which the user chooses where to save. Settings are made before it is shown.
class SavePanel {
public:
    using CompletionHandler = PanelCompletionHandler;

    virtual ~SavePanel() = default;

    virtual void setCanCreateDirectories(bool allowed) = 0;
    /// File name extensions without the dot; the first is the one that names are completed with.
    virtual void setAllowedFileTypes(std::vector<std::string> extensions) = 0;
    virtual void setDirectoryURL(URL folder) = 0;
    virtual void setNameFieldStringValue(std::string name) = 0;

    /// Shows the panel and returns. The handler is called once, on the main thread, when the user has
    /// answered, and is let go of then, with everything it keeps alive.
    virtual void beginWithCompletionHandler(CompletionHandler handler) = 0;

    /// What was chosen; nothing before the answer or when the panel has no choice.
    virtual std::optional<URL> chosenURL() const = 0;
};

/// Makes save panels.
class SavePanels {
public:
    virtual ~SavePanels() = default;
    virtual std::shared_ptr<SavePanel> savePanel() = 0;
};

} // namespace tolvane::platform
