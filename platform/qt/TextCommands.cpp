#include "platform/qt/TextCommands.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>
#include <array>

namespace tolvane::platform {

namespace {

bool canPaste(const QPlainTextEdit& text) {
    const QMimeData* const offered = QApplication::clipboard()->mimeData();
    return !text.isReadOnly() && offered != nullptr && offered->hasText();
}

bool canCut(const QPlainTextEdit& text) {
    return !text.isReadOnly() && text.textCursor().hasSelection();
}

struct Command {
    std::string_view selector;
    void (*run)(QPlainTextEdit& text);
    bool (*isPossible)(const QPlainTextEdit& text);
};

constexpr std::array<Command, 6> commands{{
    {"undo:", [](QPlainTextEdit& text) { text.undo(); },
     [](const QPlainTextEdit& text) { return !text.isReadOnly() && text.document()->isUndoAvailable(); }},
    {"redo:", [](QPlainTextEdit& text) { text.redo(); },
     [](const QPlainTextEdit& text) { return !text.isReadOnly() && text.document()->isRedoAvailable(); }},
    {"cut:", [](QPlainTextEdit& text) { text.cut(); }, &canCut},
    {"copy:", &copySelectionOrAll,
     [](const QPlainTextEdit& text) {
         return text.textCursor().hasSelection() || (text.isReadOnly() && !text.document()->isEmpty());
     }},
    {"paste:", [](QPlainTextEdit& text) { text.paste(); }, &canPaste},
    {"selectAll:", [](QPlainTextEdit& text) { text.selectAll(); },
     [](const QPlainTextEdit& text) { return !text.document()->isEmpty(); }},
}};

} // namespace

void copySelectionOrAll(QPlainTextEdit& text) {
    if (!text.textCursor().hasSelection() && text.isReadOnly()) {
        const QTextCursor before = text.textCursor();
        text.selectAll();
        text.copy();
        text.setTextCursor(before);
    } else {
        text.copy();
    }
}

TextCommands::TextCommands(QWidget& window) {
    QObject::connect(
        qApp, &QApplication::focusChanged, &connection_, [this, &window](QWidget* /*old*/, QWidget* now) {
            // Menus take the keyboard as well, and must not make the window forget its text.
            if (qobject_cast<QPlainTextEdit*>(now) != nullptr && now->window() == &window) {
                text_ = now;
            }
        });
}

std::function<void(Sender)> TextCommands::actionForSelector(std::string_view selector) {
    const auto command = std::ranges::find(commands, selector, &Command::selector);
    if (command == commands.end()) {
        return {};
    }
    return [this, run = command->run](Sender /*sender*/) {
        if (auto* const text = qobject_cast<QPlainTextEdit*>(text_.data())) {
            run(*text);
        }
    };
}

bool TextCommands::isActionEnabled(std::string_view selector) {
    const auto command = std::ranges::find(commands, selector, &Command::selector);
    const auto* const text = qobject_cast<QPlainTextEdit*>(text_.data());
    return command != commands.end() && text != nullptr && command->isPossible(*text);
}

} // namespace tolvane::platform
