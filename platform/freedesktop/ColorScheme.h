#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <optional>

namespace tolvane::platform {

/// Whether the desktop prefers dark windows, from its settings portal. The portal is asked when the event
/// loop runs and after each change that it announces; nothing waits for its answer. Main thread only.
class ColorScheme {
public:
    enum class Preference : std::uint8_t { none, dark, light };

    /// The listener is called with the first preference and with each other one after it; never where no
    /// portal answers.
    using Listener = std::function<void(Preference preference)>;

    ColorScheme(QDBusConnection connection, Listener listener);
    ColorScheme(const ColorScheme&) = delete;
    ColorScheme& operator=(const ColorScheme&) = delete;
    ~ColorScheme() = default;

private:
    void ask();
    void take(Preference preference);

    QDBusConnection connection_;
    Listener listener_;
    std::optional<Preference> known_;
    QTimer asking_;
    /// Owns the pending calls, so that no reply reaches a destroyed object.
    QObject waiting_;
};

} // namespace tolvane::platform
