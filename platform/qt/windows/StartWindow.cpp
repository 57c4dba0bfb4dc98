#include "platform/qt/windows/StartWindow.h"

#include "platform/qt/application/QtApplication.h"
#include "platform/qt/text/VisibleText.h"
#include "platform/values/Utf8.h"

#include <QApplication>
#include <QEvent>
#include <QListWidget>

namespace tolvane::platform {

constexpr int urlRole = Qt::UserRole;

StartWindow::StartWindow(QtApplication& application, const std::function<void(QMainWindow&)>& form)
    : MainWindow(application, "Start Window")
    , application_(application) {
    form(*this);
    formIsComplete();
    list_ = findChild<QListWidget*>("recentDocuments");
    if (list_ != nullptr) {
        connect(list_, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
            if (const auto url = URL::fromText(item->data(urlRole).toString().toStdString())) {
                application_.openFiles({*url});
            }
        });
        recents_ = application.recentDocuments().observe([this] { listRecentDocuments(); });
        listRecentDocuments();
    }
    hiding_.setSingleShot(true);
    connect(&hiding_, &QTimer::timeout, this, [this] { hide(); });
    qApp->installEventFilter(this);
}

void StartWindow::listRecentDocuments() {
    list_->clear();
    for (const URL& url : application_.recentDocuments().documents()) {
        const QString path = visibleText(QString::fromStdString(shownText(url.path())));
        auto item = std::make_unique<QListWidgetItem>(path);
        item->setData(urlRole, QString::fromStdString(url.absoluteString()));
        item->setToolTip(plainToolTip(path));
        list_->addItem(item.release());
    }
}

bool StartWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && !event->spontaneous() && watched != this && isVisible()
        && dynamic_cast<MainWindow*>(watched) != nullptr) {
        hiding_.start();
    }
    return MainWindow::eventFilter(watched, event);
}

bool StartWindow::takeFilesAt(const QPoint& place, const std::vector<URL>& files) {
    const auto* const area = findChild<QWidget*>("bookmarkArea");
    if (area == nullptr || !area->rect().contains(area->mapFrom(this, place))) {
        return MainWindow::takeFilesAt(place, files);
    }
    application_.findBookmarksIn(files);
    return true;
}

} // namespace tolvane::platform
