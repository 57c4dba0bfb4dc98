#include "platform/qt/preview/QtPreviewPanel.h"

namespace tolvane::platform {

QtPreviewPanel::QtPreviewPanel(
    QtApplication& application,
    const std::function<void(QMainWindow&)>& form,
    std::shared_ptr<const FileContents> files,
    const DecoderSettings& settings)
    : window_(std::make_unique<PreviewWindow>(application, form, std::move(files), settings)) {
    window_->onReturn([this] {
        // What is shown stays when the window that asked for it is gone.
        if (!dataSource_.expired()) {
            askDataSource();
        }
    });
}

void QtPreviewPanel::makeKeyAndOrderFront(Sender /*sender*/) {
    askDataSource();
    window_->expectActivation();
    window_->bringToFront();
}

void QtPreviewPanel::askDataSource() {
    const auto source = dataSource_.lock();
    if (source == nullptr) {
        window_->previewNothing(QStringLiteral("What was previewed here has been closed."));
    } else if (source->numberOfPreviewItemsInPreviewPanel(*this) == 0) {
        window_->previewNothing(QStringLiteral("No preview is available."));
    } else {
        window_->preview(source->previewPanel(*this, 0));
    }
}

QtPreviewPanels::QtPreviewPanels(
    QtApplication& application,
    std::function<void(QMainWindow&)> form,
    std::shared_ptr<const FileContents> files,
    DecoderSettings settings)
    : application_(application)
    , form_(std::move(form))
    , files_(std::move(files))
    , settings_(std::move(settings)) {}

std::shared_ptr<PreviewPanel> QtPreviewPanels::sharedPreviewPanel() {
    if (panel_ == nullptr) {
        panel_ = std::make_shared<QtPreviewPanel>(application_, form_, files_, settings_);
    }
    return panel_;
}

} // namespace tolvane::platform
