#pragma once

#include "platform/model/Controls.h"
#include "platform/qt/text/TextViewWidget.h"
#include "platform/qt/windows/Mirrors.h"
#include "tests/platform/qt/QtTest.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextCursor>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

/// Editing an exact text as a user does.
namespace tolvane::tests {

inline std::string clipboardBytes(const QString& format = QStringLiteral("text/plain;charset=utf-8")) {
    const QMimeData* const data = QApplication::clipboard()->mimeData();
    return data == nullptr ? std::string() : data->data(format).toStdString();
}

inline void press(QWidget& widget, int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = {}) {
    QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&widget, &down);
    QKeyEvent up(QEvent::KeyRelease, key, modifiers, text);
    QApplication::sendEvent(&widget, &up);
}

inline void type(QWidget& widget, const QString& text) {
    for (const QChar character : text) {
        press(widget, 0, QString(character));
    }
}

inline std::unique_ptr<QMimeData> exactMime(const std::string& bytes) {
    auto data = std::make_unique<QMimeData>();
    data->setData(QStringLiteral("text/plain;charset=utf-8"), QByteArray::fromStdString(bytes));
    data->setHtml(QStringLiteral("<b>something else</b>"));
    return data;
}

inline void select(QPlainTextEdit& edit, int from, int to) {
    QTextCursor cursor = edit.textCursor();
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    edit.setTextCursor(cursor);
}

inline int lengthOf(const QPlainTextEdit& edit) {
    return edit.document()->characterCount() - 1;
}

/// A text view with its widget on the screen, for a user to edit.
class EditedView : public testing::Test {
protected:
    EditedView() {
        application();
        widget.emplace();
        mirror.emplace(model, *widget);
        widget->show();
        widget->setFocus();
    }

    void paste(const std::string& bytes) {
        QApplication::clipboard()->setMimeData(exactMime(bytes).release());
        widget->paste();
    }

    /// The model and the document agree to the byte.
    testing::AssertionResult holds(const std::string& bytes) const {
        if (model.string() != bytes) {
            return testing::AssertionFailure()
                   << "the model holds " << testing::PrintToString(model.string());
        }
        const std::string shown = platform::exactText(*widget->document());
        if (shown != bytes) {
            return testing::AssertionFailure() << "the widget holds " << testing::PrintToString(shown);
        }
        return testing::AssertionSuccess();
    }

    platform::TextView model;
    std::optional<platform::TextViewWidget> widget;
    std::optional<platform::TextViewMirror> mirror;
};

} // namespace tolvane::tests
