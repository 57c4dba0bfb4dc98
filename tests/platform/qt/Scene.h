#pragma once

#include "platform/model/WindowController.h"
#include "platform/qt/windows/QtStoryboard.h"
#include "tests/platform/qt/Children.h"
#include "tests/platform/qt/Shell.h"

#include <QLayout>
#include <QPointer>
#include <QWidget>

#include <memory>
#include <utility>

namespace tolvane::tests {

/// A window as the storyboard makes it of a form and its content. It is not shown yet.
template <typename Content>
struct Scene {
    Scene(platform::QtStoryboard::ContentMaker makeContent, platform::QtStoryboard::Form form) {
        bundle.mainStoryboard().addWindowScene("Scene", std::move(makeContent), std::move(form));
        controller = std::dynamic_pointer_cast<platform::WindowController>(
            bundle.storyboardWithName("Main")->instantiateControllerWithIdentifier("Scene"));
        content = std::dynamic_pointer_cast<Content>(controller->contentViewController());
        widget = shell.application.widgetOf(*controller->window());
    }

    template <typename T>
    T& child(const char* name) const {
        return *childOf<T>(*widget, name);
    }

    Shell shell;
    platform::QtBundle bundle{shell.application, "1.2.3"};
    std::shared_ptr<platform::WindowController> controller;
    std::shared_ptr<Content> content;
    QPointer<QWidget> widget;
};

/// Adds a widget of this name to the parent's layout.
template <typename T>
T& addNamed(QWidget& parent, const char* name) {
    auto child = std::make_unique<T>();
    child->setObjectName(name);
    T& added = *child;
    parent.layout()->addWidget(child.release());
    return added;
}

} // namespace tolvane::tests
