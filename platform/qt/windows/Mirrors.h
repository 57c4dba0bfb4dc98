#pragma once

#include "platform/model/Controls.h"
#include "platform/model/Observers.h"
#include "platform/qt/text/ExactTextEdit.h"
#include "platform/qt/text/TextFieldWidget.h"

#include <QAbstractButton>
#include <QMetaObject>
#include <QPointer>

/// Each shows a model in a widget, now and after each change, and writes the user's changes to the model. It
/// must not outlive the model; the widget may be destroyed before or after it.
namespace tolvane::platform {

class TextFieldMirror {
public:
    TextFieldMirror(TextField& field, TextFieldWidget& widget);

private:
    Subscription text_;
    Subscription selection_;
};

/// A view without a storage shows nothing, and edits are dropped.
class TextViewMirror {
public:
    TextViewMirror(TextView& view, TextViewWidget& widget);

private:
    Subscription text_;
    Subscription edits_;
};

class ButtonMirror {
public:
    ButtonMirror(Button& button, QAbstractButton& widget);
    ButtonMirror(const ButtonMirror&) = delete;
    ButtonMirror& operator=(const ButtonMirror&) = delete;
    ~ButtonMirror() { QObject::disconnect(toggled_); }

private:
    Subscription state_;
    QMetaObject::Connection toggled_;
};

} // namespace tolvane::platform
