#pragma once

#include "platform/model/ActionTarget.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <string_view>

namespace tolvane::platform {

class TableWidget;

/// The Edit menu's commands for a table ("copy:" and "selectAll:"), while a table had the keyboard after any
/// text of the window. Selecting all is for tables that let several rows be selected.
class TableCommands final : public ActionTarget {
public:
    /// `window` outlives this object.
    explicit TableCommands(QWidget& window);

    /// None while a text had the keyboard last.
    std::function<void(Sender)> actionForSelector(std::string_view selector) override;
    bool isActionEnabled(std::string_view selector) override;

private:
    void copy(Sender sender);
    void selectAll(Sender sender);

    QPointer<TableWidget> table_;
    QObject connection_;
};

} // namespace tolvane::platform
