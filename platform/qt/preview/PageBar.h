#pragma once

#include <QLabel>
#include <QToolButton>
#include <QWidget>

#include <functional>

namespace tolvane::platform {

/// Leads through the pages of a document: "Page 2 of 17" between a button back and a button on.
class PageBar final : public QWidget {
public:
    explicit PageBar(QWidget* parent = nullptr);

    /// Pages count from 1. The function is given the page to go to.
    void onTurn(std::function<void(int page)> function) { turned_ = std::move(function); }
    void setPage(int page, int pages);

    /// Turns so many pages on, or back where negative; beyond the first and the last is nowhere.
    void turn(int count);

    int page() const { return page_; }
    QString text() const { return label_.text(); }

private:
    QToolButton& back_;
    QLabel& label_;
    QToolButton& on_;
    int page_ = 1;
    int pages_ = 1;
    std::function<void(int)> turned_;
};

} // namespace tolvane::platform
