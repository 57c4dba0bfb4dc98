// The windows of the forms with their controllers, over scripted services.
#pragma once

#include "interface/ui_FoundBookmarksWindow.h"
#include "interface/ui_MenuBar.h"
#include "interface/ui_ResolverWindow.h"
#include "tests/platform/qt/Scene.h"
#include "tests/support/DetailsWindow.h"
#include "tests/support/FoundBookmarksWindow.h"
#include "tests/support/ResolverWindow.h"

#include <QMainWindow>

#include <memory>

namespace tolvane::tests {

template <typename Form>
void setUpForm(QMainWindow& window) {
    Ui::MenuBar().setupUi(&window);
    Form().setupUi(&window);
}

template <typename Form>
struct DetailsScene {
    DetailsWindow services;
    Scene<details::ViewController> scene{
        [this](const platform::Coder& coder) {
            return details::ViewController::initWithCoder(coder, services.detailsSources());
        },
        &setUpForm<Form>};
};

struct ResolverScene {
    ResolverWindow services;
    Scene<resolver::TRViewController> scene{
        [this](const platform::Coder& coder) {
            return resolver::TRViewController::initWithCoder(coder, services.resolverSources());
        },
        &setUpForm<Ui::ResolverWindow>};
};

struct FoundBookmarksScene {
    FoundBookmarksWindow services;
    Scene<resolver::FoundBookmarksController> scene{
        [this](const platform::Coder& coder) {
            return std::make_shared<resolver::FoundBookmarksController>(coder, services.sources());
        },
        &setUpForm<Ui::FoundBookmarksWindow>};
};

} // namespace tolvane::tests
