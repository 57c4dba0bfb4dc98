#pragma once

#include "platform/Action.h"
#include "platform/URL.h"

#include <cstddef>
#include <memory>

namespace tolvane::platform {

class PreviewPanel;

/// What a preview panel asks for what it is to show.
class PreviewPanelDataSource {
public:
    PreviewPanelDataSource() = default;
    PreviewPanelDataSource(const PreviewPanelDataSource&) = delete;
    PreviewPanelDataSource& operator=(const PreviewPanelDataSource&) = delete;
    virtual ~PreviewPanelDataSource() = default;

    virtual std::size_t numberOfPreviewItemsInPreviewPanel(const PreviewPanel& panel) = 0;

    /// The item of this index, which is below the number of items.
    virtual URL previewPanel(const PreviewPanel& panel, std::size_t index) = 0;
};

/// What a preview panel would tell of itself. This program listens to none of it.
class PreviewPanelDelegate {
public:
    PreviewPanelDelegate() = default;
    PreviewPanelDelegate(const PreviewPanelDelegate&) = delete;
    PreviewPanelDelegate& operator=(const PreviewPanelDelegate&) = delete;
    virtual ~PreviewPanelDelegate() = default;
};

/// A panel that shows what is in a file. It asks its data source when it is shown and whenever it sees reason
/// to; nobody tells it to. It keeps neither its delegate nor its data source alive.
class PreviewPanel {
public:
    virtual ~PreviewPanel() = default;

    virtual void setDelegate(std::weak_ptr<PreviewPanelDelegate> delegate) = 0;
    virtual void setDataSource(std::weak_ptr<PreviewPanelDataSource> dataSource) = 0;

    /// Shows the panel in front of everything and gives it the keyboard.
    virtual void makeKeyAndOrderFront(Sender sender) = 0;
};

/// Leads to the preview panel.
class PreviewPanels {
public:
    virtual ~PreviewPanels() = default;

    /// The one panel that all windows share; null when there is none.
    virtual std::shared_ptr<PreviewPanel> sharedPreviewPanel() = 0;
};

} // namespace tolvane::platform
