#include "platform/qt/text/TextViewWidget.h"

namespace tolvane::platform {

TextViewWidget::TextViewWidget(QWidget* parent) : ExactTextEdit(parent) {}

} // namespace tolvane::platform
