#include "platform/qt/preview/QtPreviewPanel.h"

#include <utility>

namespace tolvane::platform {

QtPreviewPanel::QtPreviewPanel(std::shared_ptr<const FileContents> files, const DecoderSettings& settings)
    : window_(std::make_unique<PreviewWindow>(std::move(files), settings)) {
    window_->onReturn([this] { askDataSource(); });
}

void QtPreviewPanel::setDelegate(std::weak_ptr<PreviewPanelDelegate> delegate) {
    delegate_ = std::move(delegate);
}

void QtPreviewPanel::setDataSource(std::weak_ptr<PreviewPanelDataSource> dataSource) {
    dataSource_ = std::move(dataSource);
}

void QtPreviewPanel::makeKeyAndOrderFront(Sender /*sender*/) {
    askDataSource();
    window_->expectActivation();
    if (window_->isMinimized()) {
        window_->showNormal();
    } else {
        window_->show();
    }
    window_->raise();
    window_->activateWindow();
}

void QtPreviewPanel::askDataSource() {
    const auto source = dataSource_.lock();
    if (source == nullptr) {
        window_->previewNothing(QStringLiteral("What was previewed here has been closed."));
    } else if (source->numberOfPreviewItemsInPreviewPanel(*this) == 0) {
        window_->previewNothing(QStringLiteral("There is nothing to preview."));
    } else {
        window_->preview(source->previewPanel(*this, 0));
    }
}

QtPreviewPanels::QtPreviewPanels(std::shared_ptr<const FileContents> files, DecoderSettings settings)
    : files_(std::move(files))
    , settings_(std::move(settings)) {}

std::shared_ptr<PreviewPanel> QtPreviewPanels::sharedPreviewPanel() {
    if (panel_ == nullptr) {
        panel_ = std::make_shared<QtPreviewPanel>(files_, settings_);
    }
    return panel_;
}

} // namespace tolvane::platform
