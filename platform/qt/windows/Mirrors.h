#pragma once

#include "platform/model/Button.h"
#include "platform/model/Observers.h"
#include "platform/model/TextField.h"
#include "platform/model/TextView.h"
#include "platform/qt/text/TextFieldWidget.h"
#include "platform/qt/text/TextViewWidget.h"

#include <QAbstractButton>
#include <QLabel>
#include <QMetaObject>
#include <QPointer>
#include <QWidget>

#include <vector>

/// Each of these makes a widget show a model, now and after each change, and hands the user's changes to the
/// model, for as long as it lives itself. It must not outlive the model; the widget may go before it or
/// after it.
namespace tolvane::platform {

class TextFieldMirror {
public:
    TextFieldMirror(TextField& field, TextFieldWidget& widget);

private:
    Subscription text_;
    Subscription selection_;
};

/// Shows a field's note in labels, which are hidden without one, and in the tool tips of buttons, below what
/// these say anyway.
class NoteMirror {
public:
    NoteMirror(TextField& field, const std::vector<QWidget*>& widgets);

private:
    Subscription note_;
};

/// A view without a storage shows nothing, and what the user edits goes nowhere.
class TextViewMirror {
public:
    TextViewMirror(TextView& view, TextViewWidget& widget);
    TextViewMirror(const TextViewMirror&) = delete;
    TextViewMirror& operator=(const TextViewMirror&) = delete;
    ~TextViewMirror();

private:
    QPointer<TextViewWidget> widget_;
    Subscription text_;
    Subscription scrolling_;
    Subscription edits_;
};

class ButtonMirror {
public:
    ButtonMirror(Button& button, QAbstractButton& widget);
    ButtonMirror(const ButtonMirror&) = delete;
    ButtonMirror& operator=(const ButtonMirror&) = delete;
    ~ButtonMirror();

private:
    Subscription state_;
    QMetaObject::Connection toggled_;
};

} // namespace tolvane::platform
