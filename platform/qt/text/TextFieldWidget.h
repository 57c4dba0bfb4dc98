#pragma once

#include "platform/qt/text/ExactTextEdit.h"

#include <QSize>
#include <QString>

#include <map>
#include <string>

namespace tolvane::platform {

/// Shows one read-only, selectable text to the byte. Long text wraps anywhere; the widget is as high as its
/// lines, up to `maximumLines()`, and scrolls beyond that.
class TextFieldWidget : public ExactTextEdit {
public:
    explicit TextFieldWidget(QWidget* parent = nullptr);

    const std::string& text() const { return content().string(); }
    void setText(std::string text);

    int maximumLines() const { return maximumLines_; }

    /// At least 1. It is 4 at first.
    void setMaximumLines(int lines);

    /// Lines begin at the left edge at first.
    void setRightAligned(bool aligned);

    /// The displayed text if part of it is out of sight, for a tool tip; otherwise empty.
    QString cutText() const;

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int heightAround(double textHeight) const;
    double textHeight(double width) const;

    int maximumLines_ = 4;
    /// By the width: layouts ask for the same heights repeatedly.
    mutable std::map<int, int> heights_;
};

} // namespace tolvane::platform
