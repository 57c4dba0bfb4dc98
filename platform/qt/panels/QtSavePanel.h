#pragma once

#include "platform/qt/panels/PanelSession.h"
#include "platform/qt/panels/SaveFileDialog.h"
#include "platform/services/Panels.h"

namespace tolvane::platform {

/// A save panel on the screen: a window of its own that no other waits for. It stays as long as its handler
/// keeps it.
class QtSavePanel final : public SavePanel {
public:
    void setCanCreateDirectories(bool allowed) override { settings_.canCreateDirectories = allowed; }
    void setAllowedFileTypes(std::vector<std::string> extensions) override {
        settings_.extensions = std::move(extensions);
    }
    void setDirectoryURL(URL folder) override { settings_.folder = std::move(folder); }
    void setNameFieldStringValue(std::string name) override { settings_.name = std::move(name); }
    void setSubject(URL item) override { settings_.subject = std::move(item); }
    void beginWithCompletionHandler(PanelCompletionHandler handler) override;
    std::optional<URL> chosenURL() const override { return chosen_; }

    /// Removes the panel without an answer and lets go of its handler.
    void dismiss() { session_.end(); }

private:
    SavePanelSettings settings_;
    std::optional<URL> chosen_;
    PanelSession session_;
};

/// Makes save panels, and dismisses those still open when it goes itself.
class QtSavePanels final : public SavePanels {
public:
    QtSavePanels() = default;
    QtSavePanels(const QtSavePanels&) = delete;
    QtSavePanels& operator=(const QtSavePanels&) = delete;
    ~QtSavePanels() override;

    std::shared_ptr<SavePanel> savePanel() override;

private:
    std::vector<std::weak_ptr<QtSavePanel>> panels_;
};

} // namespace tolvane::platform
