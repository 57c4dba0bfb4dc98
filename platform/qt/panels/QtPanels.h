#pragma once

#include "platform/model/Observers.h"
#include "platform/qt/panels/FileDialogSetup.h"
#include "platform/qt/panels/OpenFileDialog.h"
#include "platform/qt/panels/PanelSession.h"
#include "platform/qt/panels/SaveFileDialog.h"
#include "platform/services/Panels.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

class QWidget;

namespace tolvane::platform {

/// Returns the widget that shows a window, or null.
using WidgetOfWindow = std::function<QWidget*(Window& window)>;

/// The panels that were made and that others keep. Dismisses those still open when it is destroyed.
template <typename Panel>
class MadePanels {
public:
    MadePanels() = default;
    MadePanels(const MadePanels&) = delete;
    MadePanels& operator=(const MadePanels&) = delete;
    ~MadePanels() {
        for (const auto& panel : panels_) {
            if (const auto open = panel.lock()) {
                open->dismiss();
            }
        }
    }

    std::shared_ptr<Panel> added(std::shared_ptr<Panel> panel) {
        std::erase_if(panels_, [](const auto& made) { return made.expired(); });
        panels_.push_back(panel);
        return panel;
    }

private:
    std::vector<std::weak_ptr<Panel>> panels_;
};

/// An open panel as a sheet on a window. Its handler keeps it alive. If the window is closed or its widget
/// destroyed, the panel goes too, and the handler is released without a call.
class QtOpenPanel final : public OpenPanel {
public:
    explicit QtOpenPanel(WidgetOfWindow widgetOfWindow, std::vector<URL> places = {});

    void setAllowsMultipleSelection(bool allowed) override { settings_.allowsMultipleSelection = allowed; }
    void setCanChooseDirectories(bool allowed) override { settings_.canChooseDirectories = allowed; }
    void setShowsHiddenFiles(bool shown) override { settings_.showsHiddenFiles = shown; }
    /// No folder is a package here: all can be browsed.
    void setTreatsFilePackagesAsDirectories(bool treated) override { static_cast<void>(treated); }
    /// Only symbolic links; a file with bookmark data is always itself.
    void setResolvesAliases(bool resolved) override { settings_.resolvesLinks = resolved; }
    void beginSheetModalForWindow(Window& window, PanelCompletionHandler handler) override;
    std::optional<URL> chosenURL() const override { return chosen_; }

    /// Removes the panel without an answer and releases its handler.
    void dismiss() { session_.end(); }

private:
    WidgetOfWindow widgetOfWindow_;
    OpenPanelSettings settings_;
    std::optional<URL> chosen_;
    PanelSession session_;
    Subscription windowCloses_;
};

/// Makes open panels, and dismisses those still open when it is destroyed.
class QtOpenPanels final : public OpenPanels {
public:
    /// A panel for a window without a widget is free-standing, and no window waits for it.
    explicit QtOpenPanels(WidgetOfWindow widgetOfWindow, PlacesOfDesktop places = noPlaces)
        : widgetOfWindow_(std::move(widgetOfWindow))
        , places_(std::move(places)) {}

    std::shared_ptr<OpenPanel> openPanel() override {
        return panels_.added(std::make_shared<QtOpenPanel>(widgetOfWindow_, places_()));
    }

private:
    WidgetOfWindow widgetOfWindow_;
    PlacesOfDesktop places_;
    MadePanels<QtOpenPanel> panels_;
};

/// The panel of the Open command: any number of files and folders, hidden ones and links too.
class OpenDocumentsPanel {
public:
    /// Called with what was chosen, which is nothing when the user chose not to.
    using CompletionHandler = std::function<void(const std::vector<URL>& chosen)>;

    explicit OpenDocumentsPanel(PlacesOfDesktop places = noPlaces) : places_(std::move(places)) {}

    /// Where the panel begins from now on; without this, where the user was last.
    void setDirectoryURL(URL folder) { folder_ = std::move(folder); }

    /// Shows the panel and returns. An open one comes to the front instead and keeps its handler. The handler
    /// is called once, and released then or when this object is destroyed.
    void begin(CompletionHandler handler);

private:
    PlacesOfDesktop places_;
    std::optional<URL> folder_;
    PanelSession session_;
};

/// A save panel as a window of its own that no other waits for. Its handler keeps it alive.
class QtSavePanel final : public SavePanel {
public:
    explicit QtSavePanel(std::vector<URL> places = {}) { settings_.places = std::move(places); }

    void setCanCreateDirectories(bool allowed) override { settings_.canCreateDirectories = allowed; }
    void setAllowedFileTypes(std::vector<std::string> extensions) override {
        settings_.extensions = std::move(extensions);
    }
    void setDirectoryURL(URL folder) override { settings_.folder = std::move(folder); }
    void setNameFieldStringValue(std::string name) override { settings_.name = std::move(name); }
    void setSubject(URL item) override { settings_.subject = std::move(item); }
    void beginWithCompletionHandler(PanelCompletionHandler handler) override;
    std::optional<URL> chosenURL() const override { return chosen_; }

    /// Removes the panel without an answer and releases its handler.
    void dismiss() { session_.end(); }

private:
    SavePanelSettings settings_;
    std::optional<URL> chosen_;
    PanelSession session_;
};

/// Makes save panels, and dismisses those still open when it is destroyed.
class QtSavePanels final : public SavePanels {
public:
    explicit QtSavePanels(PlacesOfDesktop places = noPlaces) : places_(std::move(places)) {}

    std::shared_ptr<SavePanel> savePanel() override {
        return panels_.added(std::make_shared<QtSavePanel>(places_()));
    }

private:
    PlacesOfDesktop places_;
    MadePanels<QtSavePanel> panels_;
};

} // namespace tolvane::platform
