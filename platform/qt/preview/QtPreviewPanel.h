#pragma once

#include "platform/qt/preview/DecoderProcess.h"
#include "platform/qt/preview/PreviewWindow.h"
#include "platform/services/FileContents.h"
#include "platform/services/PreviewPanel.h"

#include <functional>
#include <memory>

class QMainWindow;

namespace tolvane::platform {

class QtApplication;

/// The preview panel of the desktop: one window. It asks its data source for the count and the first item
/// when it is brought forward, and again whenever it becomes active after having been inactive, since nobody
/// tells it that the item is another one now. Once its data source is gone it goes on showing the last item.
class QtPreviewPanel final : public PreviewPanel {
public:
    QtPreviewPanel(
        QtApplication& application,
        const std::function<void(QMainWindow&)>& form,
        std::shared_ptr<const FileContents> files,
        const DecoderSettings& settings);

    void setDelegate(std::weak_ptr<PreviewPanelDelegate> delegate) override;
    void setDataSource(std::weak_ptr<PreviewPanelDataSource> dataSource) override;
    void makeKeyAndOrderFront(Sender sender) override;

    PreviewWindow& window() { return *window_; }

private:
    void askDataSource();

    std::weak_ptr<PreviewPanelDelegate> delegate_;
    std::weak_ptr<PreviewPanelDataSource> dataSource_;
    std::unique_ptr<PreviewWindow> window_;
};

/// Makes the one panel when it is first asked for. Has to go before the application object does.
class QtPreviewPanels final : public PreviewPanels {
public:
    /// The form puts the menus of the program's windows into the panel's. `application` outlives all panels.
    QtPreviewPanels(
        QtApplication& application,
        std::function<void(QMainWindow&)> form,
        std::shared_ptr<const FileContents> files,
        DecoderSettings settings = {});

    std::shared_ptr<PreviewPanel> sharedPreviewPanel() override;

private:
    QtApplication& application_;
    std::function<void(QMainWindow&)> form_;
    std::shared_ptr<const FileContents> files_;
    DecoderSettings settings_;
    std::shared_ptr<QtPreviewPanel> panel_;
};

} // namespace tolvane::platform
