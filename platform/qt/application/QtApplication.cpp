#include "platform/qt/application/QtApplication.h"

#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QWidget>
#include <QtGlobal>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace tolvane::platform {

namespace {

bool isAnythingShown() {
    return std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget* widget) {
        const Qt::WindowType type = widget->windowType();
        return widget->isVisible() && widget->testAttribute(Qt::WA_QuitOnClose)
               && (type == Qt::Window || type == Qt::Dialog);
    });
}

/// Qt explains at length what it tried; only that it gave up matters.
void endWithoutDisplay(QtMsgType type, const QMessageLogContext& /*context*/, const QString& /*message*/) {
    if (type != QtFatalMsg) {
        return;
    }
    static_cast<void>(std::fputs(
        "tolvane: there is no display to show windows on; 'tolvane-cli report FILE' shows the same facts in "
        "a "
        "terminal\n",
        stderr));
    std::_Exit(EXIT_FAILURE);
}

} // namespace

QtApplication::QtApplication(QtUserDefaults& settings, RecentDocuments& recentDocuments, std::string version)
    : settings_(settings)
    , recentDocuments_(recentDocuments)
    , version_(std::move(version)) {
    // Qt counts windows that were closed; here windows are hidden, by their models.
    QApplication::setQuitOnLastWindowClosed(false);
    qApp->installEventFilter(this);
    check_.setSingleShot(true);
    connect(&check_, &QTimer::timeout, this, &QtApplication::quitWhenNothingIsShown);
}

ActionTarget* QtApplication::responderTo(std::string_view selector) {
    for (ActionTarget* const target : targets_) {
        if (target->actionForSelector(selector)) {
            return target;
        }
    }
    return actionForSelector(selector) ? this : nullptr;
}

void QtApplication::findBookmarksIn(const std::vector<URL>& urls) const {
    if (bookmarkFinder_) {
        bookmarkFinder_(urls);
    }
}

void QtApplication::openFiles(const std::vector<URL>& urls) const {
    if (opener_ && !urls.empty()) {
        opener_(urls);
    }
}

MenuItem& QtApplication::helpMenuItem(const std::string& name, const std::string& title) {
    MenuItem*& item = helpMenuItems_[name];
    if (item == nullptr) {
        item = &helpMenu_.addItem(title);
    }
    return *item;
}

QWidget* QtApplication::widgetOf(const Window& window) const {
    const auto widget = widgets_.find(&window);
    return widget == widgets_.end() ? nullptr : widget->second;
}

void QtApplication::setWidget(const Window& window, QWidget* widget) {
    if (widget == nullptr) {
        widgets_.erase(&window);
    } else {
        widgets_.insert_or_assign(&window, widget);
    }
}

std::function<void(Sender)> QtApplication::actionForSelector(std::string_view selector) {
    static constexpr std::array<NamedAction<QtApplication>, 3> actions{{
        {"terminate:", &QtApplication::terminate},
        {"orderFrontStandardAboutPanel:", &QtApplication::orderFrontStandardAboutPanel},
        {"clearRecentDocuments:", &QtApplication::clearRecentDocuments},
    }};
    return actionIn(actions, *this, selector);
}

bool QtApplication::isActionEnabled(std::string_view selector) {
    return selector == "clearRecentDocuments:" ? !recentDocuments_.documents().empty()
                                               : ActionTarget::isActionEnabled(selector);
}

void QtApplication::orderFrontStandardAboutPanel(Sender /*sender*/) {
    auto panel = std::make_unique<QMessageBox>(
        QMessageBox::NoIcon, tr("About Tolvane"),
        tr("Tolvane %1\n\nShows the facts that a file system keeps about a file and that file browsers "
           "hide. It only ever looks: nothing it shows is changed.")
            .arg(QString::fromStdString(version_)),
        QMessageBox::Close, QApplication::activeWindow());
    panel->setIconPixmap(QApplication::windowIcon().pixmap(64, 64));
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel.release()->open();
}

bool QtApplication::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Hide && watched->isWidgetType() && !event->spontaneous()
        && static_cast<QWidget*>(watched)->isWindow()) {
        // Later: what is hidden now may be about to show something else.
        checkSoon();
    }
    return QObject::eventFilter(watched, event);
}

int QtApplication::run(const std::function<bool()>& isWorkLeft) {
    isWorkLeft_ = isWorkLeft;
    int status = QApplication::exec();
    while (isWorkLeft() || isAnythingShown()) {
        // The work left need not show anything.
        checkSoon();
        status = QApplication::exec();
    }
    isWorkLeft_ = {};
    return status;
}

void QtApplication::quitWhenNothingIsShown() {
    if (isAnythingShown()) {
        return;
    }
    if (isWorkLeft_ && isWorkLeft_()) {
        checkSoon();
    } else if (isAwaited_ && isAwaited_()) {
        constexpr std::chrono::milliseconds interval{100};
        check_.start(interval);
    } else {
        QCoreApplication::quit();
    }
}

void QtApplication::checkSoon() {
    check_.start(std::chrono::milliseconds(0));
}

DisplayCheck::DisplayCheck() {
    qInstallMessageHandler(&endWithoutDisplay);
}

DisplayCheck::~DisplayCheck() {
    qInstallMessageHandler(nullptr);
}

} // namespace tolvane::platform
