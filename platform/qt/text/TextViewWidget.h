#pragma once

#include "platform/model/Observers.h"
#include "platform/qt/text/ExactTextEdit.h"

#include <utility>

namespace tolvane::platform {

/// Shows text of several lines with its attributes, to the byte. The user can edit it unless it is set to be
/// read-only.
class TextViewWidget : public ExactTextEdit {
public:
    using ExactTextEdit::ExactTextEdit;
    using ExactTextEdit::setContent;

    /// As small as can be: its layout gives it what room there is.
    QSize sizeHint() const override { return minimumSizeHint().expandedTo(minimumSize()); }

    /// Called after each change that the user made; `content()` is then the new text.
    [[nodiscard]] Subscription observeEdits(Observers::Function observer) {
        return observers_.add(std::move(observer));
    }

protected:
    void userChangedContent() override { observers_.notify(); }

private:
    Observers observers_;
};

} // namespace tolvane::platform
