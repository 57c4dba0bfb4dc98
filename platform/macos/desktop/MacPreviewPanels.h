#pragma once

#include "platform/services/PreviewPanel.h"

#include <memory>

namespace tolvane::platform {

/// The system's own preview panel. It asks the data source when it decides to, and is not told of changes;
/// once the data source is gone it has no items. Main thread only.
class MacPreviewPanels final : public PreviewPanels {
public:
    std::shared_ptr<PreviewPanel> sharedPreviewPanel() override;

private:
    std::shared_ptr<PreviewPanel> panel_;
};

} // namespace tolvane::platform
