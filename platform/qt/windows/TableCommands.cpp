#include "platform/qt/windows/TableCommands.h"

#include "platform/qt/windows/TableWidget.h"

#include <QApplication>
#include <QClipboard>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <array>

namespace tolvane::platform {

TableCommands::TableCommands(QWidget& window) {
    QObject::connect(
        qApp, &QApplication::focusChanged, &connection_, [this, &window](QWidget* /*old*/, QWidget* now) {
            // Menus and buttons take the keyboard as well, and must not make the window forget its table.
            if (now == nullptr || now->window() != &window) {
                return;
            }
            if (auto* const table = dynamic_cast<TableWidget*>(now)) {
                table_ = table;
            } else if (
                qobject_cast<QPlainTextEdit*>(now) != nullptr || qobject_cast<QTextEdit*>(now) != nullptr
                || qobject_cast<QLineEdit*>(now) != nullptr) {
                table_ = nullptr;
            }
        });
}

std::function<void(Sender)> TableCommands::actionForSelector(std::string_view selector) {
    static constexpr std::array<NamedAction<TableCommands>, 2> actions{{
        {"copy:", &TableCommands::copy},
        {"selectAll:", &TableCommands::selectAll},
    }};
    // A hidden table shows nothing that could be meant.
    return table_ != nullptr && table_->isVisible() ? actionIn(actions, *this, selector)
                                                    : std::function<void(Sender)>();
}

bool TableCommands::isActionEnabled(std::string_view selector) {
    if (table_ == nullptr) {
        return false;
    }
    return selector == "copy:"
               ? table_->selectionModel()->hasSelection()
               : table_->selectionMode() == TableWidget::ExtendedSelection && table_->model()->rowCount() > 0;
}

void TableCommands::copy(Sender /*sender*/) {
    if (table_->selectionModel()->hasSelection()) {
        QApplication::clipboard()->setText(table_->selectedText());
    }
}

void TableCommands::selectAll(Sender /*sender*/) {
    table_->selectAll();
}

} // namespace tolvane::platform
