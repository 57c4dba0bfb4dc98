#pragma once

#include "platform/model/Observers.h"
#include "platform/qt/panels/FileDialogSetup.h"
#include "platform/qt/panels/OpenFileDialog.h"
#include "platform/qt/panels/PanelSession.h"
#include "platform/services/Panels.h"

#include <functional>
#include <utility>
#include <vector>

class QWidget;

namespace tolvane::platform {

/// Answers the widget that shows a window, or null when none does.
using WidgetOfWindow = std::function<QWidget*(Window& window)>;

/// An open panel on the screen, as a sheet on a window. It stays as long as its handler keeps it. When the
/// window is closed, or its widget destroyed, the panel goes too, and its handler is let go of without a
/// call.
class QtOpenPanel final : public OpenPanel {
public:
    explicit QtOpenPanel(WidgetOfWindow widgetOfWindow, std::vector<URL> places = {});

    void setAllowsMultipleSelection(bool allowed) override { settings_.allowsMultipleSelection = allowed; }
    void setCanChooseDirectories(bool allowed) override { settings_.canChooseDirectories = allowed; }
    void setShowsHiddenFiles(bool shown) override { settings_.showsHiddenFiles = shown; }
    /// No folder is a package here: all can be browsed.
    void setTreatsFilePackagesAsDirectories(bool treated) override { static_cast<void>(treated); }
    /// Symbolic links alone; a file that holds bookmark data always stands for itself.
    void setResolvesAliases(bool resolved) override { settings_.resolvesLinks = resolved; }
    void beginSheetModalForWindow(Window& window, PanelCompletionHandler handler) override;
    std::optional<URL> chosenURL() const override { return chosen_; }

    /// Removes the panel without an answer and lets go of its handler.
    void dismiss() { session_.end(); }

private:
    WidgetOfWindow widgetOfWindow_;
    OpenPanelSettings settings_;
    std::optional<URL> chosen_;
    PanelSession session_;
    Subscription windowCloses_;
};

/// Makes open panels, and dismisses those still open when it goes itself.
class QtOpenPanels final : public OpenPanels {
public:
    /// A panel for a window without a widget is free-standing, and no window waits for it.
    explicit QtOpenPanels(WidgetOfWindow widgetOfWindow, PlacesOfDesktop places = {});
    QtOpenPanels(const QtOpenPanels&) = delete;
    QtOpenPanels& operator=(const QtOpenPanels&) = delete;
    ~QtOpenPanels() override;

    std::shared_ptr<OpenPanel> openPanel() override;

private:
    WidgetOfWindow widgetOfWindow_;
    PlacesOfDesktop places_;
    std::vector<std::weak_ptr<QtOpenPanel>> panels_;
};

/// The panel behind the program's own Open command: any number of files and folders, hidden ones too, links
/// as themselves. No window waits for it.
class OpenDocumentsPanel {
public:
    /// Called with what was chosen, which is nothing when the user chose not to.
    using CompletionHandler = std::function<void(const std::vector<URL>& chosen)>;

    explicit OpenDocumentsPanel(PlacesOfDesktop places = {}) : places_(std::move(places)) {}

    /// Where the panel begins from now on; without this, where the user was last.
    void setDirectoryURL(URL folder) { folder_ = std::move(folder); }

    /// Shows the panel and returns. A panel that is still open comes to the front instead and goes on with
    /// the handler that it has. The handler is called once, and let go of when it was called or when this
    /// object goes.
    void begin(CompletionHandler handler);

private:
    PlacesOfDesktop places_;
    std::optional<URL> folder_;
    PanelSession session_;
};

} // namespace tolvane::platform
