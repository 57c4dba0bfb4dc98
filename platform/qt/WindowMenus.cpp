#include "platform/qt/WindowMenus.h"

#include "platform/Menu.h"
#include "platform/Utf8.h"
#include "platform/qt/MainWindow.h"
#include "platform/qt/QtApplication.h"
#include "platform/qt/VisibleText.h"

#include <QAction>
#include <QApplication>
#include <QMenu>

#include <string>
#include <vector>

namespace tolvane::platform {

namespace {

/// Marks the items that a menu was filled with, so that they can be told from the form's own.
constexpr auto filledIn = "filledIn";

void removeFilledIn(QMenu& menu) {
    for (QAction* const item : menu.actions()) {
        if (item->property(filledIn).toBool()) {
            menu.removeAction(item);
            item->deleteLater();
        }
    }
}

/// A menu's text with the sign that would mark a key taken literally.
QString menuText(const QString& text) {
    return QString(text).replace('&', "&&");
}

/// A form's text without the signs that mark keys.
QString titleOf(const QString& text) {
    QString title;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'&' && i + 1 < text.size()) {
            ++i;
        }
        title += text[i];
    }
    return title;
}

void showItem(const MenuItem& item, QAction& shown) {
    const QString title = QString::fromStdString(item.title());
    // The form's own text marks a key as well.
    if (titleOf(shown.text()) != title) {
        shown.setText(menuText(title));
    }
    const bool isOn = item.state() == MenuItemState::on;
    shown.setCheckable(isOn);
    shown.setChecked(isOn);
}

QAction& insert(QMenu& menu, QAction* before, const QString& text) {
    auto item = std::make_unique<QAction>(menuText(text), &menu);
    item->setProperty(filledIn, true);
    menu.insertAction(before, item.get());
    return *item.release();
}

} // namespace

void fillRecentMenu(QMainWindow& window, QtApplication& application) {
    auto* const menu = window.findChild<QMenu*>("recentMenu");
    if (menu == nullptr) {
        return;
    }
    QObject::connect(menu, &QMenu::aboutToShow, &window, [menu, &application] {
        removeFilledIn(*menu);
        QAction* const first = menu->actions().value(0);
        for (const URL& url : application.recentDocuments().documents()) {
            QAction& item = insert(*menu, first, visibleText(QString::fromStdString(shownText(url.path()))));
            QObject::connect(
                &item, &QAction::triggered, menu, [url, &application] { application.openFiles({url}); });
        }
    });
}

std::vector<Subscription> mirrorHelpMenu(QMainWindow& window, QtApplication& application) {
    std::vector<Subscription> subscriptions;
    auto* const menu = window.findChild<QMenu*>("helpMenu");
    if (menu == nullptr) {
        return subscriptions;
    }
    for (QAction* const shown : menu->actions()) {
        if (shown->isSeparator()) {
            continue;
        }
        MenuItem& item =
            application.helpMenuItem(shown->objectName().toStdString(), titleOf(shown->text()).toStdString());
        showItem(item, *shown);
        subscriptions.push_back(item.observe([&item, shown] { showItem(item, *shown); }));
    }
    return subscriptions;
}

void fillWindowMenu(QMainWindow& window) {
    auto* const menu = window.findChild<QMenu*>("windowMenu");
    if (menu == nullptr) {
        return;
    }
    QObject::connect(menu, &QMenu::aboutToShow, &window, [menu, &window] {
        removeFilledIn(*menu);
        for (QWidget* const other : QApplication::topLevelWidgets()) {
            auto* const shown = dynamic_cast<MainWindow*>(other);
            if (shown == nullptr || !shown->isVisible()) {
                continue;
            }
            QAction& item = insert(*menu, nullptr, QString(shown->windowTitle()).replace("[*][*]", "[*]"));
            item.setCheckable(true);
            item.setChecked(shown == &window);
            QObject::connect(&item, &QAction::triggered, shown, [shown] { shown->bringToFront(); });
        }
    });
}

} // namespace tolvane::platform
