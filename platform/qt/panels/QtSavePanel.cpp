#include "platform/qt/panels/QtSavePanel.h"

#include <utility>

namespace tolvane::platform {

void QtSavePanel::beginWithCompletionHandler(PanelCompletionHandler handler) {
    chosen_.reset();
    auto dialog = std::make_unique<SaveFileDialog>(settings_);
    const SaveFileDialog* shown = dialog.get();
    session_.begin(std::move(dialog), [this, shown, handler = std::move(handler)](bool accepted) {
        if (accepted) {
            chosen_ = shown->chosenURL();
        }
        if (handler) {
            handler(accepted ? modalResponseOK : 0);
        }
    });
}

QtSavePanels::~QtSavePanels() {
    for (const auto& panel : panels_) {
        if (const auto open = panel.lock()) {
            open->dismiss();
        }
    }
}

std::shared_ptr<SavePanel> QtSavePanels::savePanel() {
    std::erase_if(panels_, [](const auto& panel) { return panel.expired(); });
    auto panel = std::make_shared<QtSavePanel>(places_ ? places_() : std::vector<URL>());
    panels_.push_back(panel);
    return panel;
}

} // namespace tolvane::platform
