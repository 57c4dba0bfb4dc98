#include "platform/qt/text/TextViewWidget.h"

#include <QRect>
#include <QScrollArea>
#include <QScrollBar>

namespace tolvane::platform {

void TextViewWidget::scrollToEnd() {
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    for (QWidget* around = parentWidget(); around != nullptr; around = around->parentWidget()) {
        auto* const area = dynamic_cast<QScrollArea*>(around);
        if (area != nullptr && area->widget() != nullptr) {
            const QPoint end = mapTo(area->widget(), rect().bottomLeft());
            area->ensureVisible(end.x(), end.y());
        }
    }
}

} // namespace tolvane::platform
