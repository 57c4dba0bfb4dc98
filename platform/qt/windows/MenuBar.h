#pragma once

#include <QMenuBar>

namespace tolvane::platform {

/// A menu bar whose line at the lower edge has no gaps. Qt's usual style draws the line piece by piece below
/// the titles, and on screens with two pixels to a point each piece ends a pixel before the next begins.
class MenuBar final : public QMenuBar {
public:
    explicit MenuBar(QWidget* parent = nullptr) : QMenuBar(parent) {}

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tolvane::platform
