#pragma once

#include "platform/qt/panels/AlertBox.h"
#include "platform/qt/panels/FileDialogSetup.h"
#include "tests/platform/qt/QtTest.h"
#include "tests/platform/qt/application/EventLoop.h"
#include "tests/support/TemporaryFolder.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace tolvane::tests {

/// The dialog of a type that is on the screen; null if there is none.
template <typename Dialog>
Dialog* shownDialog() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* dialog = dynamic_cast<Dialog*>(widget);
        if (dialog != nullptr && dialog->isVisible()) {
            return dialog;
        }
    }
    return nullptr;
}

/// The same, where one must be on the screen.
template <typename Dialog>
Dialog& theShownDialog() {
    if (auto* const dialog = shownDialog<Dialog>()) {
        return *dialog;
    }
    throw std::logic_error("no dialog of this type is shown");
}

/// A private configuration folder, since Qt keeps the folders that its panels showed last.
class DialogTest : public testing::Test {
public:
    ~DialogTest() override { settle(); }

protected:
    DialogTest() {
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(configuration.path()));
        application();
    }

    static QLineEdit& nameField(const QFileDialog& dialog) { return *dialog.findChild<QLineEdit*>(); }

    static QPushButton& button(const QFileDialog& dialog, QDialogButtonBox::StandardButton which) {
        return *dialog.findChild<QDialogButtonBox*>()->button(which);
    }

    static QAbstractItemView& list(const QFileDialog& dialog) {
        const auto views = platform::folderViewsOf(dialog);
        return views.front()->isVisible() ? *views.front() : *views.back();
    }

    /// The row of a name; invalid if it is not there.
    static QModelIndex row(const QFileDialog& dialog, const QString& name) {
        const QAbstractItemView& view = list(dialog);
        for (int i = 0; i < view.model()->rowCount(view.rootIndex()); ++i) {
            const QModelIndex index = view.model()->index(i, 0, view.rootIndex());
            if (index.data().toString() == name) {
                return index;
            }
        }
        return {};
    }

    /// Only an active window has a focus.
    static void activate(const QFileDialog& dialog) {
        list(dialog).activateWindow();
        ASSERT_TRUE(eventually([&] { return dialog.isActiveWindow(); }));
    }

    /// Where a name is in the list's viewport, once it is there: Qt reads the folder in the background.
    static QPoint placeOf(const QFileDialog& dialog, const QString& name) {
        activate(dialog);
        QAbstractItemView& view = list(dialog);
        const auto isInPlace = [&] {
            const QModelIndex index = row(dialog, name);
            if (!index.isValid()) {
                return false;
            }
            view.scrollTo(index);
            return view.indexAt(view.visualRect(index).center()) == index;
        };
        EXPECT_TRUE(eventually(isInPlace)) << name.toStdString();
        return view.visualRect(row(dialog, name)).center();
    }

    static void click(const QFileDialog& dialog, const QString& name, Qt::KeyboardModifiers keys = {}) {
        const QPoint place = placeOf(dialog, name);
        QTest::mouseClick(list(dialog).viewport(), Qt::LeftButton, keys, place);
    }

    static void doubleClick(const QFileDialog& dialog, const QString& name) {
        click(dialog, name);
        QTest::mouseDClick(list(dialog).viewport(), Qt::LeftButton, {}, placeOf(dialog, name));
    }

    static void type(const QFileDialog& dialog, const QString& text) {
        activate(dialog);
        nameField(dialog).setFocus();
        nameField(dialog).selectAll();
        QTest::keyClicks(&nameField(dialog), text);
    }

    /// Presses a button of the alert on the screen by its index.
    static void answerAlert(int index) {
        ASSERT_TRUE(eventually([] { return shownDialog<platform::AlertBox>() != nullptr; }));
        for (QAbstractButton* candidate : shownDialog<platform::AlertBox>()->buttons()) {
            if (candidate->property("alertButtonIndex").toInt() == index) {
                QTest::mouseClick(candidate, Qt::LeftButton);
                break;
            }
        }
        settle();
    }

    TemporaryFolder configuration;
    TemporaryFolder folder;
};

} // namespace tolvane::tests
