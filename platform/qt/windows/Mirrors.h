#pragma once

#include "platform/model/Controls.h"
#include "platform/model/Observers.h"
#include "platform/model/ProgressIndicator.h"
#include "platform/qt/text/TextFieldWidget.h"
#include "platform/qt/text/TextViewWidget.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QMetaObject>
#include <QPointer>
#include <QProgressBar>
#include <QWidget>

#include <vector>

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

/// A field that is shown like a form's own texts, with hidden characters written out.
class LabelMirror {
public:
    LabelMirror(TextField& field, QLabel& widget);

private:
    Subscription text_;
};

/// A field that the user edits, for texts that are typed rather than kept to the byte.
class EntryMirror {
public:
    EntryMirror(TextField& field, QLineEdit& widget);
    EntryMirror(const EntryMirror&) = delete;
    EntryMirror& operator=(const EntryMirror&) = delete;
    ~EntryMirror() { QObject::disconnect(edited_); }

private:
    Subscription text_;
    QMetaObject::Connection edited_;
};

/// The bar is hidden while there is no work.
class ProgressMirror {
public:
    ProgressMirror(ProgressIndicator& indicator, QProgressBar& widget);

private:
    Subscription progress_;
};

/// Shows a field's note in labels, which are hidden without one, and below the tool tips of buttons.
class NoteMirror {
public:
    NoteMirror(TextField& field, const std::vector<QWidget*>& widgets);

private:
    Subscription note_;
};

/// A view without a storage shows nothing, and edits are dropped.
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
    ~ButtonMirror() { QObject::disconnect(toggled_); }

private:
    Subscription state_;
    QMetaObject::Connection toggled_;
};

} // namespace tolvane::platform
