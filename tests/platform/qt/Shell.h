#pragma once

#include "platform/model/ActionTarget.h"
#include "platform/qt/application/QtApplication.h"
#include "platform/qt/application/QtUserDefaults.h"
#include "platform/qt/application/RecentDocuments.h"
#include "tests/platform/qt/QtTest.h"
#include "tests/support/TemporaryFolder.h"

#include <QAction>
#include <QCoreApplication>
#include <QEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QString>

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::tests {

/// What all windows of a program share, with settings in a folder of its own.
class Shell {
public:
    Shell() {
        application.setFileOpener([this](const std::vector<platform::URL>& urls) {
            opened.insert(opened.end(), urls.begin(), urls.end());
        });
    }

    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;

    /// Windows are deleted later and still need the application.
    ~Shell() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    QApplication& toolkit = tests::application();
    TemporaryFolder folder;
    platform::QtUserDefaults settings{QString::fromStdString(folder.path("settings.conf"))};
    platform::RecentDocuments recentDocuments{settings};
    platform::QtApplication application{settings, recentDocuments, "1.2.3"};
    std::vector<platform::URL> opened;
};

/// Performs the actions of its selectors by logging them.
class Recorder final : public platform::ActionTarget {
public:
    explicit Recorder(std::vector<std::string> selectors) : selectors_(std::move(selectors)) {}

    std::function<void(platform::Sender)> actionForSelector(std::string_view selector) override {
        for (const std::string& known : selectors_) {
            if (known == selector) {
                return [this, known](platform::Sender /*sender*/) { journal += known; };
            }
        }
        return {};
    }
    bool isActionEnabled(std::string_view selector) override {
        return enabled && platform::ActionTarget::isActionEnabled(selector);
    }

    std::string journal;
    bool enabled = true;

private:
    std::vector<std::string> selectors_;
};

/// Adds a menu item with a selector.
inline QAction& addItem(QMenu& menu, const QString& selector) {
    QAction& item = *menu.addAction(selector);
    item.setProperty("selector", selector);
    return item;
}

/// The texts of a menu's items; "-" for a separator.
inline std::vector<std::string> itemsOf(const QMenu& menu) {
    std::vector<std::string> texts;
    for (const QAction* const item : menu.actions()) {
        texts.push_back(item->isSeparator() ? "-" : item->text().toStdString());
    }
    return texts;
}

} // namespace tolvane::tests
