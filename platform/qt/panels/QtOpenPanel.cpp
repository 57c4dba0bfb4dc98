#include "platform/qt/panels/QtOpenPanel.h"

#include "platform/model/Window.h"

#include <utility>

namespace tolvane::platform {

QtOpenPanel::QtOpenPanel(WidgetOfWindow widgetOfWindow, std::vector<URL> places)
    : widgetOfWindow_(std::move(widgetOfWindow)) {
    settings_.resolvesLinks = true;
    settings_.places = std::move(places);
}

void QtOpenPanel::beginSheetModalForWindow(Window& window, PanelCompletionHandler handler) {
    chosen_.reset();
    QWidget* parent = widgetOfWindow_ ? widgetOfWindow_(window) : nullptr;
    auto dialog = std::make_unique<OpenFileDialog>(settings_, parent);
    if (parent != nullptr) {
        dialog->setWindowModality(Qt::WindowModal);
    }
    windowCloses_ = window.observeWillClose([this] { dismiss(); });
    const OpenFileDialog* shown = dialog.get();
    session_.begin(std::move(dialog), [this, shown, handler = std::move(handler)](bool accepted) {
        windowCloses_.reset();
        if (accepted) {
            chosen_ = shown->chosenURLs().front();
        }
        if (handler) {
            handler(accepted ? modalResponseOK : 0);
        }
    });
}

QtOpenPanels::QtOpenPanels(WidgetOfWindow widgetOfWindow, PlacesOfDesktop places)
    : widgetOfWindow_(std::move(widgetOfWindow))
    , places_(std::move(places)) {}

QtOpenPanels::~QtOpenPanels() {
    for (const auto& panel : panels_) {
        if (const auto open = panel.lock()) {
            open->dismiss();
        }
    }
}

std::shared_ptr<OpenPanel> QtOpenPanels::openPanel() {
    std::erase_if(panels_, [](const auto& panel) { return panel.expired(); });
    auto panel = std::make_shared<QtOpenPanel>(widgetOfWindow_, places_ ? places_() : std::vector<URL>());
    panels_.push_back(panel);
    return panel;
}

void OpenDocumentsPanel::begin(CompletionHandler handler) {
    if (QDialog* open = session_.dialog()) {
        open->raise();
        open->activateWindow();
        return;
    }
    auto dialog = std::make_unique<OpenFileDialog>(
        OpenPanelSettings{true, true, true, false, folder_, places_ ? places_() : std::vector<URL>()});
    const OpenFileDialog* shown = dialog.get();
    session_.begin(std::move(dialog), [shown, handler = std::move(handler)](bool accepted) {
        if (handler) {
            handler(accepted ? shown->chosenURLs() : std::vector<URL>{});
        }
    });
}

} // namespace tolvane::platform
