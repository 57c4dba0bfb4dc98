#include "platform/qt/text/TextCommands.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>

namespace tolvane::platform {

namespace {

// Qt has two kinds of text widgets, alike in all that matters here but without a common base.

template <typename Text>
void copySelectionOrAllOf(Text& text) {
    if (!text.textCursor().hasSelection() && text.isReadOnly()) {
        const QTextCursor before = text.textCursor();
        text.selectAll();
        text.copy();
        text.setTextCursor(before);
    } else {
        text.copy();
    }
}

template <typename Text>
bool canPaste(const Text& text) {
    const QMimeData* const offered = QApplication::clipboard()->mimeData();
    return !text.isReadOnly() && offered != nullptr && offered->hasText();
}

template <typename Text>
bool canCut(const Text& text) {
    return !text.isReadOnly() && text.textCursor().hasSelection();
}

template <typename Text>
struct Command {
    std::string_view selector;
    void (*run)(Text& text);
    bool (*isPossible)(const Text& text);
};

template <typename Text>
constexpr std::array<Command<Text>, 6> commands{{
    {"undo:", [](Text& text) { text.undo(); },
     [](const Text& text) { return !text.isReadOnly() && text.document()->isUndoAvailable(); }},
    {"redo:", [](Text& text) { text.redo(); },
     [](const Text& text) { return !text.isReadOnly() && text.document()->isRedoAvailable(); }},
    {"cut:", [](Text& text) { text.cut(); }, &canCut<Text>},
    {"copy:", &copySelectionOrAllOf<Text>,
     [](const Text& text) {
         return text.textCursor().hasSelection() || (text.isReadOnly() && !text.document()->isEmpty());
     }},
    {"paste:", [](Text& text) { text.paste(); }, &canPaste<Text>},
    {"selectAll:", [](Text& text) { text.selectAll(); },
     [](const Text& text) { return !text.document()->isEmpty(); }},
}};

/// Null when there is no such command.
template <typename Text>
const Command<Text>* commandFor(std::string_view selector) {
    const auto command = std::ranges::find(commands<Text>, selector, &Command<Text>::selector);
    return command == commands<Text>.end() ? nullptr : &*command;
}

bool isText(const QWidget* widget) {
    return qobject_cast<const QPlainTextEdit*>(widget) != nullptr
           || qobject_cast<const QTextEdit*>(widget) != nullptr;
}

} // namespace

void copySelectionOrAll(QPlainTextEdit& text) {
    copySelectionOrAllOf(text);
}

TextCommands::TextCommands(QWidget& window) {
    QObject::connect(
        qApp, &QApplication::focusChanged, &connection_, [this, &window](QWidget* /*old*/, QWidget* now) {
            // Menus take the keyboard as well, and must not make the window forget its text.
            if (isText(now) && now->window() == &window) {
                text_ = now;
            }
        });
}

std::function<void(Sender)> TextCommands::actionForSelector(std::string_view selector) {
    const auto* const plain = commandFor<QPlainTextEdit>(selector);
    const auto* const rich = commandFor<QTextEdit>(selector);
    if (plain == nullptr || rich == nullptr) {
        return {};
    }
    return [this, plain, rich](Sender /*sender*/) {
        if (auto* const plainText = qobject_cast<QPlainTextEdit*>(text_.data())) {
            plain->run(*plainText);
        } else if (auto* const richText = qobject_cast<QTextEdit*>(text_.data())) {
            rich->run(*richText);
        }
    };
}

bool TextCommands::isActionEnabled(std::string_view selector) {
    if (commandFor<QPlainTextEdit>(selector) == nullptr) {
        return false;
    }
    if (const auto* const plainText = qobject_cast<QPlainTextEdit*>(text_.data())) {
        return commandFor<QPlainTextEdit>(selector)->isPossible(*plainText);
    }
    const auto* const richText = qobject_cast<QTextEdit*>(text_.data());
    return richText != nullptr && commandFor<QTextEdit>(selector)->isPossible(*richText);
}

} // namespace tolvane::platform
