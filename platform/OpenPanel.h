#pragma once

#include "platform/ModalResponse.h"
#include "platform/URL.h"

#include <memory>
#include <optional>

namespace tolvane::platform {

class Window;

/// A panel in which the user chooses what to open. Files can be chosen. Settings are made before it is shown.
class OpenPanel {
public:
    using CompletionHandler = PanelCompletionHandler;

    virtual ~OpenPanel() = default;

    virtual void setAllowsMultipleSelection(bool allowed) = 0;
    virtual void setCanChooseDirectories(bool allowed) = 0;
    virtual void setShowsHiddenFiles(bool shown) = 0;
    /// Whether the contents of packages can be browsed and chosen like those of folders.
    virtual void setTreatsFilePackagesAsDirectories(bool treated) = 0;
    /// Whether a chosen alias file stands for the item that it leads to, rather than for itself.
    virtual void setResolvesAliases(bool resolved) = 0;

    /// Shows the panel as a sheet on the window, which alone waits for it, and returns. The handler is called
    /// once, on the main thread, when the user has answered, and is let go of then, with everything it keeps
    /// alive. The handler keeps the window alive.
    virtual void beginSheetModalForWindow(Window& window, CompletionHandler handler) = 0;

    /// What was chosen; nothing before the answer or when the panel has no choice.
    virtual std::optional<URL> chosenURL() const = 0;
};

/// Makes open panels.
class OpenPanels {
public:
    virtual ~OpenPanels() = default;
    virtual std::shared_ptr<OpenPanel> openPanel() = 0;
};

} // namespace tolvane::platform
