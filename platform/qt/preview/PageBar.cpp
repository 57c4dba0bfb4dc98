#include "platform/qt/preview/PageBar.h"

#include "platform/qt/application/MakeChild.h"

#include <QHBoxLayout>

#include <algorithm>

namespace tolvane::platform {

PageBar::PageBar(QWidget* parent)
    : QWidget(parent)
    , back_(makeChild<QToolButton>(this))
    , label_(makeChild<QLabel>(this))
    , on_(makeChild<QToolButton>(this)) {
    back_.setArrowType(Qt::LeftArrow);
    back_.setAccessibleName(QStringLiteral("Previous page"));
    back_.setToolTip(QStringLiteral("Previous page"));
    on_.setArrowType(Qt::RightArrow);
    on_.setAccessibleName(QStringLiteral("Next page"));
    on_.setToolTip(QStringLiteral("Next page"));
    for (QToolButton* const button : {&back_, &on_}) {
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
    }
    QObject::connect(&back_, &QToolButton::clicked, this, [this] { turn(-1); });
    QObject::connect(&on_, &QToolButton::clicked, this, [this] { turn(1); });
    label_.setTextFormat(Qt::PlainText);
    auto& row = makeChild<QHBoxLayout>(this);
    constexpr int margin = 4;
    row.setContentsMargins(margin, margin, margin, margin);
    row.addStretch(1);
    row.addWidget(&back_);
    row.addWidget(&label_);
    row.addWidget(&on_);
    row.addStretch(1);
}

void PageBar::setPage(int page, int pages) {
    page_ = page;
    pages_ = pages;
    label_.setText(QStringLiteral("Page %1 of %2").arg(page).arg(pages));
    back_.setEnabled(page > 1);
    on_.setEnabled(page < pages);
}

void PageBar::turn(int count) {
    const int page = std::clamp(page_ + count, 1, pages_);
    if (page != page_) {
        setPage(page, pages_);
        turned_(page);
    }
}

} // namespace tolvane::platform
