#pragma once

#include "platform/model/ActionTarget.h"
#include "platform/values/URL.h"

#include <cstddef>
#include <memory>

namespace tolvane::platform {

class PreviewPanel;

/// Supplies the items of a preview panel.
class PreviewPanelDataSource {
public:
    PreviewPanelDataSource() = default;
    PreviewPanelDataSource(const PreviewPanelDataSource&) = delete;
    PreviewPanelDataSource& operator=(const PreviewPanelDataSource&) = delete;
    virtual ~PreviewPanelDataSource() = default;

    virtual std::size_t numberOfPreviewItemsInPreviewPanel(const PreviewPanel& panel) = 0;

    /// The item at this index, which is below the number of items.
    virtual URL previewPanel(const PreviewPanel& panel, std::size_t index) = 0;
};

/// A preview panel's delegate, unused by this program.
class PreviewPanelDelegate {
public:
    PreviewPanelDelegate() = default;
    PreviewPanelDelegate(const PreviewPanelDelegate&) = delete;
    PreviewPanelDelegate& operator=(const PreviewPanelDelegate&) = delete;
    virtual ~PreviewPanelDelegate() = default;
};

/// A panel that shows the contents of a file. It asks its data source when it is shown and when it becomes
/// active again. It keeps neither its delegate nor its data source alive.
class PreviewPanel {
public:
    virtual ~PreviewPanel() = default;

    virtual void setDelegate(std::weak_ptr<PreviewPanelDelegate> delegate) = 0;
    virtual void setDataSource(std::weak_ptr<PreviewPanelDataSource> dataSource) = 0;

    /// Shows the panel in front and gives it the keyboard.
    virtual void makeKeyAndOrderFront(Sender sender) = 0;
};

/// Gives access to the preview panel.
class PreviewPanels {
public:
    virtual ~PreviewPanels() = default;

    /// The one panel that all windows share, or null.
    virtual std::shared_ptr<PreviewPanel> sharedPreviewPanel() = 0;
};

} // namespace tolvane::platform
