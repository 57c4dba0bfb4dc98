#pragma once

#include "platform/values/URL.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The panels in which the user chooses a file: one to open, one to save.
namespace tolvane::platform {

class Window;

/// A panel's response when the user agreed. Every other response means that nothing was chosen.
inline constexpr int modalResponseOK = 1;

/// Called by a panel when the user has answered.
using PanelCompletionHandler = std::function<void(int response)>;

/// A panel in which the user chooses what to open. Files can be chosen. Settings are made before it is shown.
class OpenPanel {
public:
    virtual ~OpenPanel() = default;

    virtual void setAllowsMultipleSelection(bool allowed) = 0;
    virtual void setCanChooseDirectories(bool allowed) = 0;
    virtual void setShowsHiddenFiles(bool shown) = 0;
    /// Whether the contents of packages can be browsed and chosen like those of folders.
    virtual void setTreatsFilePackagesAsDirectories(bool treated) = 0;
    /// Whether a chosen alias file stands for the item that it leads to, rather than for itself.
    virtual void setResolvesAliases(bool resolved) = 0;

    /// Shows the panel as a sheet on the window, which alone waits for it, and returns. The handler is called
    /// once, on the main thread, when the user has answered, and is destroyed then, with everything it keeps
    /// alive. The handler keeps the window alive.
    virtual void beginSheetModalForWindow(Window& window, PanelCompletionHandler handler) = 0;

    /// The chosen item; nothing before the answer or when nothing was chosen.
    virtual std::optional<URL> chosenURL() const = 0;
};

/// Makes open panels.
class OpenPanels {
public:
    virtual ~OpenPanels() = default;
    virtual std::shared_ptr<OpenPanel> openPanel() = 0;
};

/// A free-standing panel in which the user chooses where to save. Settings are made before it is shown.
class SavePanel {
public:
    virtual ~SavePanel() = default;

    virtual void setCanCreateDirectories(bool allowed) = 0;
    /// File name extensions without the dot; the first is the one that names are completed with.
    virtual void setAllowedFileTypes(std::vector<std::string> extensions) = 0;
    virtual void setDirectoryURL(URL folder) = 0;
    virtual void setNameFieldStringValue(std::string name) = 0;
    /// The item that the text to be saved is about. Before it is replaced the user is asked in words that say
    /// so.
    virtual void setSubject(URL item) = 0;

    /// Shows the panel and returns. The handler is called once, on the main thread, when the user has
    /// answered, and is destroyed then, with everything it keeps alive.
    virtual void beginWithCompletionHandler(PanelCompletionHandler handler) = 0;

    /// The chosen item; nothing before the answer or when nothing was chosen.
    virtual std::optional<URL> chosenURL() const = 0;
};

/// Makes save panels.
class SavePanels {
public:
    virtual ~SavePanels() = default;
    virtual std::shared_ptr<SavePanel> savePanel() = 0;
};

} // namespace tolvane::platform
