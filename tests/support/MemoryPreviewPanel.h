#pragma once

#include "platform/services/PreviewPanel.h"

#include <memory>
#include <utility>
#include <vector>

namespace tolvane::platform {

/// A preview panel without a screen: it asks for its items and keeps them.
class MemoryPreviewPanel final : public PreviewPanel {
public:
    void setDelegate(std::weak_ptr<PreviewPanelDelegate> delegate) override {
        delegate_ = std::move(delegate);
    }
    void setDataSource(std::weak_ptr<PreviewPanelDataSource> dataSource) override {
        dataSource_ = std::move(dataSource);
    }
    void makeKeyAndOrderFront(Sender /*sender*/) override {
        visible_ = true;
        askDataSource();
    }

    std::shared_ptr<PreviewPanelDelegate> delegate() const { return delegate_.lock(); }
    std::shared_ptr<PreviewPanelDataSource> dataSource() const { return dataSource_.lock(); }
    bool isVisible() const { return visible_; }

    /// The items as they were when they were last asked for.
    const std::vector<URL>& items() const { return items_; }

    /// Asks for the items anew. There are none without a data source.
    void askDataSource() {
        items_.clear();
        const auto source = dataSource();
        const std::size_t count = source ? source->numberOfPreviewItemsInPreviewPanel(*this) : 0;
        for (std::size_t index = 0; index < count; ++index) {
            items_.push_back(source->previewPanel(*this, index));
        }
    }

private:
    std::weak_ptr<PreviewPanelDelegate> delegate_;
    std::weak_ptr<PreviewPanelDataSource> dataSource_;
    bool visible_ = false;
    std::vector<URL> items_;
};

} // namespace tolvane::platform
