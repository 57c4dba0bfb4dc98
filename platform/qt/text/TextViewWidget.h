#pragma once

#include "platform/model/Observers.h"
#include "platform/qt/text/ExactTextEdit.h"
#include "platform/values/URL.h"

#include <functional>
#include <utility>
#include <vector>

namespace tolvane::platform {

/// Shows text of several lines with its attributes, to the byte. Editable unless set read-only.
class TextViewWidget : public ExactTextEdit {
public:
    using ExactTextEdit::ExactTextEdit;
    using ExactTextEdit::setContent;

    /// As small as possible: the layout gives it room.
    QSize sizeHint() const override { return minimumSizeHint().expandedTo(minimumSize()); }

    /// Scrolls to the end of the text, and everything around it that scrolls to where the end is seen.
    void scrollToEnd();

    /// Receives dropped files and returns whether it took them.
    using FileTaker = std::function<bool(const std::vector<URL>& files)>;
    void setFileTaker(FileTaker taker) { fileTaker_ = std::move(taker); }
    bool takeFiles(const std::vector<URL>& files) { return fileTaker_ && fileTaker_(files); }

    /// Called after each change that the user made; `content()` is then the new text.
    [[nodiscard]] Subscription observeEdits(Observers::Function observer) {
        return observers_.add(std::move(observer));
    }

protected:
    void userChangedContent() override { observers_.notify(); }

private:
    FileTaker fileTaker_;
    Observers observers_;
};

} // namespace tolvane::platform
