#pragma once

#include <QGuiApplication>
#include <QObject>

#include <string>

namespace tolvane::platform {

/// Remembers when the user last pressed a key or a button in a window of the program, so that another program
/// may come to the front for it.
class UserEvents final : public QObject {
public:
    /// Watches the application. Only an X server's times mean something to other programs.
    explicit UserEvents(bool isOnX11 = QGuiApplication::platformName() == QLatin1String("xcb"));

    /// A new startup id with the time of that event; empty where there is none. On Wayland a token of the
    /// compositor would be needed, which Qt requests for its own windows only.
    std::string startupId();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isOnX11_;
    quint64 latest_ = 0;
    int idsMade_ = 0;
};

} // namespace tolvane::platform
