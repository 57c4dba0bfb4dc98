#include "platform/qt/windows/WindowMenus.h"

#include "platform/model/Menu.h"
#include "platform/qt/application/QtApplication.h"
#include "platform/qt/text/VisibleText.h"
#include "platform/qt/windows/MainWindow.h"
#include "platform/values/Utf8.h"

#include <QAction>
#include <QApplication>
#include <QMenu>

#include <algorithm>
#include <cstddef>

namespace tolvane::platform {

namespace {

/// Marks the items added here.
constexpr auto filledIn = "filledIn";

void removeFilledIn(QMenu& menu) {
    for (QAction* const item : menu.actions()) {
        if (item->property(filledIn).toBool()) {
            menu.removeAction(item);
            item->deleteLater();
        }
    }
}

/// A menu's text in which "&" is literal.
QString menuText(const QString& text) {
    return QString(text).replace('&', "&&");
}

/// A form's text without the marks for keys.
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

/// Inserts items, in order, with shortened texts and complete tool tips, and returns them.
std::vector<QAction*> insert(QMenu& menu, QAction* before, const std::vector<QString>& texts) {
    const std::vector<QString> shown = shortenedForMenu(texts, menu.fontMetrics());
    std::vector<QAction*> items;
    for (std::size_t index = 0; index < texts.size(); ++index) {
        auto item = std::make_unique<QAction>(menuText(shown[index]), &menu);
        item->setProperty(filledIn, true);
        // Otherwise Qt would make a tool tip of the text, as markup.
        item->setToolTip(plainToolTip(breakableText(texts[index])));
        menu.insertAction(before, item.get());
        items.push_back(item.release());
    }
    menu.setToolTipsVisible(true);
    return items;
}

/// Paths for display; URLs instead of paths that look the same.
std::vector<QString> shownPaths(const std::vector<URL>& urls) {
    std::vector<QString> paths;
    paths.reserve(urls.size());
    for (const URL& url : urls) {
        paths.push_back(visibleText(QString::fromStdString(platform::shownText(url.path()))));
    }
    std::vector<QString> shown;
    shown.reserve(urls.size());
    for (std::size_t index = 0; index < urls.size(); ++index) {
        shown.push_back(
            std::ranges::count(paths, paths[index]) == 1
                ? paths[index]
                : QString::fromStdString(urls[index].absoluteString()));
    }
    return shown;
}

} // namespace

void fillRecentMenu(QMainWindow& window, QtApplication& application) {
    auto* const menu = window.findChild<QMenu*>("recentMenu");
    if (menu == nullptr) {
        return;
    }
    QObject::connect(menu, &QMenu::aboutToShow, &window, [menu, &application] {
        removeFilledIn(*menu);
        const std::vector<URL> urls = application.recentDocuments().documents();
        const auto items = insert(*menu, menu->actions().value(0), shownPaths(urls));
        for (std::size_t index = 0; index < urls.size(); ++index) {
            QObject::connect(items[index], &QAction::triggered, menu, [url = urls[index], &application] {
                application.openFiles({url});
            });
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
        std::vector<MainWindow*> windows;
        std::vector<QString> titles;
        for (QWidget* const other : QApplication::topLevelWidgets()) {
            auto* const shown = dynamic_cast<MainWindow*>(other);
            if (shown != nullptr && shown->isVisible()) {
                windows.push_back(shown);
                titles.push_back(QString(shown->windowTitle()).replace("[*][*]", "[*]"));
            }
        }
        const auto items = insert(*menu, nullptr, titles);
        for (std::size_t index = 0; index < windows.size(); ++index) {
            MainWindow* const shown = windows[index];
            items[index]->setCheckable(true);
            items[index]->setChecked(shown == &window);
            QObject::connect(items[index], &QAction::triggered, shown, [shown] { shown->bringToFront(); });
        }
    });
}

} // namespace tolvane::platform
