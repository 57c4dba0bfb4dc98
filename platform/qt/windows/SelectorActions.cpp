#include "platform/qt/windows/SelectorActions.h"

#include "platform/qt/application/MakeChild.h"

#include <QAbstractButton>
#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTimer>

#include <string>

namespace tolvane::platform {

namespace {

void send(const ResponderLookup& lookup, const QObject& sender) {
    const std::string selector = selectorOf(sender).toStdString();
    if (ActionTarget* const target = lookup(selector)) {
        if (const auto action = target->actionForSelector(selector)) {
            action(&sender);
        }
    }
}

/// Whether choosing the item or pressing the button would do anything now.
bool isOffered(const ResponderLookup& lookup, const QObject& control) {
    const std::string selector = selectorOf(control).toStdString();
    ActionTarget* const target = lookup(selector);
    return target != nullptr && target->isActionEnabled(selector);
}

bool hasResponder(const ResponderLookup& lookup, const QAction& item) {
    return lookup(selectorOf(item).toStdString()) != nullptr;
}

void offerButtons(const QMainWindow& window, const ResponderLookup& lookup) {
    for (QAbstractButton* const button : window.findChildren<QAbstractButton*>()) {
        if (!selectorOf(*button).isEmpty()) {
            button->setEnabled(isOffered(lookup, *button));
        }
    }
}

/// The action may have enabled others, or destroyed the window.
void sendAndOffer(QMainWindow& window, const ResponderLookup& lookup, const QObject& sender) {
    const QPointer<QMainWindow> remaining(&window);
    send(lookup, sender);
    if (remaining != nullptr) {
        offerButtons(*remaining, lookup);
    }
}

} // namespace

QString selectorOf(const QObject& control) {
    return control.property("selector").toString();
}

void connectSelectors(QMainWindow& window, const ResponderLookup& lookup) {
    for (QAction* const item : window.findChildren<QAction*>()) {
        if (!selectorOf(*item).isEmpty()) {
            item->setEnabled(hasResponder(lookup, *item));
            QObject::connect(item, &QAction::triggered, &window, [&window, lookup, item] {
                sendAndOffer(window, lookup, *item);
            });
        }
    }
    for (QAbstractButton* const button : window.findChildren<QAbstractButton*>()) {
        if (!selectorOf(*button).isEmpty()) {
            QObject::connect(button, &QAbstractButton::clicked, &window, [&window, lookup, button] {
                sendAndOffer(window, lookup, *button);
            });
        }
    }
    offerButtons(window, lookup);
    // Actions depend on texts. Many change at once, so this runs once afterwards.
    QTimer& offering = makeChild<QTimer>(static_cast<QObject*>(&window));
    offering.setSingleShot(true);
    QObject::connect(
        &offering, &QTimer::timeout, &window, [&window, lookup] { offerButtons(window, lookup); });
    for (QPlainTextEdit* const text : window.findChildren<QPlainTextEdit*>()) {
        QObject::connect(text, &QPlainTextEdit::textChanged, &offering, qOverload<>(&QTimer::start));
    }
    for (QMenu* const menu : window.findChildren<QMenu*>()) {
        QObject::connect(menu, &QMenu::aboutToShow, &window, [lookup, menu] {
            for (QAction* const item : menu->actions()) {
                if (!selectorOf(*item).isEmpty()) {
                    item->setEnabled(isOffered(lookup, *item));
                }
            }
        });
        // A disabled item's key has no effect even if its action has become possible since. The chosen item
        // is triggered after the menu is hidden.
        QObject::connect(menu, &QMenu::aboutToHide, &window, [lookup, menu] {
            for (QAction* const item : menu->actions()) {
                if (!selectorOf(*item).isEmpty()) {
                    item->setEnabled(hasResponder(lookup, *item));
                }
            }
        });
    }
}

} // namespace tolvane::platform
