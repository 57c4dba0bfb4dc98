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

/// The desktop's preview panel: one window. It asks its data source for the first item when it is brought to
/// the front and whenever it becomes active again, since it is not notified about changes. Once its data
/// source is gone it goes on showing the last item.
class QtPreviewPanel final : public PreviewPanel {
public:
    QtPreviewPanel(
        QtApplication& application,
        const std::function<void(QMainWindow&)>& form,
        std::shared_ptr<const FileContents> files,
        const DecoderSettings& settings);

    void setDelegate(std::weak_ptr<PreviewPanelDelegate> delegate) override {
        delegate_ = std::move(delegate);
    }
    void setDataSource(std::weak_ptr<PreviewPanelDataSource> dataSource) override {
        dataSource_ = std::move(dataSource);
    }
    void makeKeyAndOrderFront(Sender sender) override;

    PreviewWindow& window() { return *window_; }

private:
    void askDataSource();

    std::weak_ptr<PreviewPanelDelegate> delegate_;
    std::weak_ptr<PreviewPanelDataSource> dataSource_;
    std::unique_ptr<PreviewWindow> window_;
};

/// Makes the one panel on first use. Must be destroyed before the application object.
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
