#include "platform/macos/desktop/MacPreviewPanels.h"

#include "platform/macos/appkit/AppKitCalls.h"
#include "platform/macos/values/Conversions.h"

#include <utility>

namespace tolvane::platform {

using macos::Owned;

namespace {

/// One object answers the system's panel as delegate and as data source. Nothing of the delegate is used, so
/// only whether there is one is passed on.
class MacPreviewPanel final : public PreviewPanel {
public:
    MacPreviewPanel() = default;
    MacPreviewPanel(const MacPreviewPanel&) = delete;
    MacPreviewPanel& operator=(const MacPreviewPanel&) = delete;
    ~MacPreviewPanel() override { macos::removeFromPreviewPanel(source_.get()); }

    void setDelegate(std::weak_ptr<PreviewPanelDelegate> delegate) override {
        macos::setPreviewPanelDelegate(delegate.expired() ? nullptr : source_.get());
    }

    void setDataSource(std::weak_ptr<PreviewPanelDataSource> dataSource) override {
        dataSource_ = std::move(dataSource);
        macos::setPreviewPanelDataSource(dataSource_.expired() ? nullptr : source_.get());
    }

    void makeKeyAndOrderFront(Sender /*sender*/) override { macos::makePreviewPanelKeyAndOrderFront(); }

private:
    std::size_t count() const {
        const auto dataSource = dataSource_.lock();
        return dataSource ? dataSource->numberOfPreviewItemsInPreviewPanel(*this) : 0;
    }

    CFURLRef copyURL(std::size_t index) const {
        const auto dataSource = dataSource_.lock();
        return dataSource ? macos::fileURLOf(dataSource->previewPanel(*this, index)).release() : nullptr;
    }

    std::weak_ptr<PreviewPanelDataSource> dataSource_;
    Owned<CFTypeRef> source_{macos::createPreviewSource(
        {[this] { return count(); }, [this](std::size_t index) { return copyURL(index); }})};
};

} // namespace

std::shared_ptr<PreviewPanel> MacPreviewPanels::sharedPreviewPanel() {
    if (!macos::hasSharedPreviewPanel()) {
        return nullptr;
    }
    if (!panel_) {
        panel_ = std::make_shared<MacPreviewPanel>();
    }
    return panel_;
}

} // namespace tolvane::platform
