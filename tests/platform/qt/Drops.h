#pragma once

#include <QApplication>
#include <QByteArray>
#include <QDropEvent>
#include <QMimeData>
#include <QWidget>
#include <gtest/gtest.h>

namespace tolvane::tests {

/// Drops data on a widget, to the innermost first as Qt does. It must be taken as a copy.
inline void drop(const QMimeData& data, QWidget& widget, QPoint place) {
    const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter(place, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(place, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction) << "nobody is told that the file was moved";
}

/// Drops the files of a "text/uri-list".
inline void dropFiles(const QByteArray& list, QWidget& widget, QPoint place) {
    QMimeData data;
    data.setData("text/uri-list", list);
    drop(data, widget, place);
}

inline void dropFiles(const QByteArray& list, QWidget& widget) {
    dropFiles(list, widget, widget.rect().center());
}

} // namespace tolvane::tests
