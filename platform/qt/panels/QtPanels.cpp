#include "platform/qt/panels/QtPanels.h"

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
        handler(accepted ? modalResponseOK : 0);
    });
}

void OpenDocumentsPanel::begin(CompletionHandler handler) {
    if (QDialog* open = session_.dialog()) {
        open->raise();
        open->activateWindow();
        return;
    }
    auto dialog =
        std::make_unique<OpenFileDialog>(OpenPanelSettings{true, true, true, false, folder_, places_()});
    const OpenFileDialog* shown = dialog.get();
    session_.begin(std::move(dialog), [shown, handler = std::move(handler)](bool accepted) {
        handler(accepted ? shown->chosenURLs() : std::vector<URL>{});
    });
}

void QtSavePanel::beginWithCompletionHandler(PanelCompletionHandler handler) {
    chosen_.reset();
    auto dialog = std::make_unique<SaveFileDialog>(settings_);
    const SaveFileDialog* shown = dialog.get();
    session_.begin(std::move(dialog), [this, shown, handler = std::move(handler)](bool accepted) {
        if (accepted) {
            chosen_ = shown->chosenURL();
        }
        handler(accepted ? modalResponseOK : 0);
    });
}

} // namespace tolvane::platform
