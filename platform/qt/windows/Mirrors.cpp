#include "platform/qt/windows/Mirrors.h"

#include "platform/qt/text/VisibleText.h"

#include <QString>

#include <algorithm>
#include <functional>
#include <utility>

namespace tolvane::platform {

namespace {

/// What shows a note in the widget; nothing for one that is neither a label nor a button.
std::function<void(const QString& note)> noteShower(QWidget& widget) {
    if (auto* const label = qobject_cast<QLabel*>(&widget)) {
        return [shown = QPointer(label)](const QString& note) {
            if (shown) {
                shown->setText(note);
                shown->setVisible(!note.isEmpty());
            }
        };
    }
    if (auto* const button = qobject_cast<QAbstractButton*>(&widget)) {
        return [shown = QPointer(button), usual = button->toolTip()](const QString& note) {
            if (shown) {
                shown->setToolTip(note.isEmpty() ? usual : plainToolTip(usual + u'\n' + note));
            }
        };
    }
    return {};
}

} // namespace

NoteMirror::NoteMirror(TextField& field, const std::vector<QWidget*>& widgets) {
    std::vector<std::function<void(const QString& note)>> showers;
    for (QWidget* const widget : widgets) {
        if (auto shower = noteShower(*widget)) {
            showers.push_back(std::move(shower));
        }
    }
    const auto showNote = [&field, showers = std::move(showers)] {
        const QString note = QString::fromStdString(field.note());
        for (const auto& show : showers) {
            show(note);
        }
    };
    showNote();
    note_ = field.observe(showNote);
}

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

LabelMirror::LabelMirror(TextField& field, QLabel& widget) {
    widget.setTextFormat(Qt::PlainText);
    const auto showText = [&field, shown = QPointer(&widget)] {
        if (shown) {
            shown->setText(visibleText(field.stringValue()));
        }
    };
    showText();
    text_ = field.observe(showText);
}

EntryMirror::EntryMirror(TextField& field, QLineEdit& widget) {
    const auto showText = [&field, shown = QPointer(&widget)] {
        const QString text = QString::fromStdString(field.stringValue());
        if (shown && shown->text() != text) {
            shown->setText(text);
        }
    };
    showText();
    text_ = field.observe(showText);
    edited_ = QObject::connect(&widget, &QLineEdit::textEdited, [&field](const QString& text) {
        field.setStringValue(text.toStdString());
    });
}

ProgressMirror::ProgressMirror(ProgressIndicator& indicator, QProgressBar& widget) {
    const auto showProgress = [&indicator, shown = QPointer(&widget)] {
        if (!shown) {
            return;
        }
        const auto [done, all] = indicator.progress();
        // A maximum of zero would be shown as work without an end.
        shown->setMaximum(static_cast<int>(std::max<std::size_t>(all, 1)));
        shown->setValue(static_cast<int>(done));
        shown->setVisible(all > 0);
    };
    showProgress();
    progress_ = indicator.observe(showProgress);
}

TextViewMirror::TextViewMirror(TextView& view, TextViewWidget& widget) : widget_(&widget) {
    widget.setFileTaker([&view](const std::vector<URL>& files) { return view.performDragOperation(files); });
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
    scrolling_ = view.observeScrolling([shown = QPointer(&widget)] {
        if (shown) {
            shown->scrollToEnd();
        }
    });
    edits_ = widget.observeEdits([&view, &widget] {
        // Asked anew each time: a view can lose its storage.
        if (TextStorage* const edited = view.textStorage()) {
            edited->setAttributedString(widget.content());
        }
    });
}

TextViewMirror::~TextViewMirror() {
    if (widget_) {
        widget_->setFileTaker({});
    }
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
