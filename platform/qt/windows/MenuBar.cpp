#include "platform/qt/windows/MenuBar.h"

#include <QAction>
#include <QMenu>
#include <QPaintEvent>
#include <QPainter>
#include <QRegion>
#include <QStyle>
#include <QStyleOptionMenuItem>

namespace tolvane::platform {

void MenuBar::paintEvent(QPaintEvent* event) {
    QMenuBar::paintEvent(event);
    if (!style()->inherits("QFusionStyle")) {
        return;
    }
    // The same line as beside the titles, in one piece. It may reach into the row above.
    QRegion line(0, height() - 2, width(), 2);
    QAction* const active = activeAction();
    if (active != nullptr && active->menu() != nullptr && active->menu()->isVisible()) {
        // An open menu's title is drawn a pixel too narrow as well.
        const int missing = devicePixelRatioF() > 1 ? 1 : 0;
        line -= actionGeometry(active).adjusted(0, 0, -missing, 0);
    }
    QStyleOptionMenuItem option;
    option.initFrom(this);
    option.menuItemType = QStyleOptionMenuItem::EmptyArea;
    option.checkType = QStyleOptionMenuItem::NotCheckable;
    option.menuRect = rect();
    // The line ends a pixel short of the rectangle, too.
    option.rect = rect().adjusted(-1, 0, 1, 0);
    QPainter painter(this);
    painter.setClipRegion(line & event->region());
    style()->drawControl(QStyle::CE_MenuBarEmptyArea, &option, &painter, this);
}

} // namespace tolvane::platform
