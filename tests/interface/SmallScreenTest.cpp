#include "interface/ui_DocumentWindow.h"
#include "interface/ui_MenuBar.h"
#include "tests/platform/qt/QtTest.h"

#include <QAbstractButton>
#include <QMainWindow>
#include <QScrollArea>
#include <gtest/gtest.h>

#include <string>

namespace tolvane::tests {
namespace {

TEST(SmallScreen, hasTheButtonsOfTheDetailsInReach) {
    application();
    QMainWindow window;
    Ui::MenuBar().setupUi(&window);
    Ui::DocumentWindow().setupUi(&window);
    // At twice the scale, on a screen 1280 pixels wide.
    window.resize(590, 350);
    window.show();
    QCoreApplication::processEvents();
    ASSERT_EQ(window.size(), QSize(590, 350));
    const QWidget& seen = *window.findChild<QScrollArea*>("detailsArea")->viewport();
    int buttons = 0;
    for (const QAbstractButton* const button : seen.findChildren<QAbstractButton*>()) {
        const QRect place(button->mapTo(&seen, QPoint()), button->size());
        EXPECT_GE(place.left(), 0) << button->objectName().toStdString();
        EXPECT_LE(place.right(), seen.rect().right()) << button->objectName().toStdString();
        ++buttons;
    }
    EXPECT_GE(buttons, 6);
    const QAbstractButton& save = *window.findChild<QAbstractButton*>("saveButton");
    EXPECT_TRUE(window.rect().contains({save.mapTo(&window, QPoint()), save.size()}));
}

} // namespace
} // namespace tolvane::tests
