#include "platform/qt/windows/Mirrors.h"

namespace tolvane::platform {

TextFieldMirror::TextFieldMirror(TextField& field, TextFieldWidget& widget) {
    const auto showText = [&field, shown = QPointer(&widget)] {
        if (shown) {
            shown->setText(field.stringValue());
        }
    };
    showText();
    text_ = field.observe(showText);
    selection_ = field.observeSelection([shown = QPointer(&widget)] {
        if (shown) {
            shown->selectAll();
            shown->setFocus(Qt::OtherFocusReason);
        }
    });
}

TextViewMirror::TextViewMirror(TextView& view, TextViewWidget& widget) {
    TextStorage* const storage = view.textStorage();
    if (storage == nullptr) {
        widget.setContent({});
        return;
    }
    const auto showText = [storage, shown = QPointer(&widget)] {
        if (shown) {
            shown->setContent(storage->attributedString());
        }
    };
    showText();
    text_ = storage->observe(showText);
    edits_ = widget.observeEdits([&view, &widget] {
        // Asked anew each time: a view can lose its storage.
        if (TextStorage* const edited = view.textStorage()) {
            edited->setAttributedString(widget.content());
        }
    });
}

ButtonMirror::ButtonMirror(Button& button, QAbstractButton& widget) {
    widget.setCheckable(true);
    const auto showState = [&button, shown = QPointer(&widget)] {
        if (shown) {
            shown->setChecked(button.state() == ButtonState::on);
        }
    };
    showState();
    state_ = button.observe(showState);
    toggled_ = QObject::connect(&widget, &QAbstractButton::toggled, [&button](bool isOn) {
        button.setState(isOn ? ButtonState::on : ButtonState::off);
    });
}

} // namespace tolvane::platform
