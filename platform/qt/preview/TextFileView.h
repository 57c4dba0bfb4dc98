#pragma once

#include "platform/FileContents.h"
#include "platform/qt/preview/BackgroundWork.h"
#include "platform/qt/preview/TextBlock.h"

#include <QAbstractScrollArea>

#include <functional>
#include <memory>
#include <system_error>

namespace tolvane::platform {

/// Shows a text file of any size: it reads the stretch around what is seen, beside the main thread, and goes
/// through the file by bytes, so how many lines there are is never asked.
class TextFileView final : public QAbstractScrollArea {
public:
    explicit TextFileView(QWidget* parent = nullptr);

    /// Shows this file from its first line.
    void showFile(std::shared_ptr<const OpenedFile> file, TextEncoding encoding);

    /// Lets the file go and shows nothing.
    void clear();

    /// Told on the main thread when the file cannot be read.
    void onFailure(std::function<void(std::error_code)> function) { failed_ = std::move(function); }

    /// The lines seen, each a line of text; empty while the first have not come.
    QString shownText() const;

    /// Whether there is a text, of a length that the clipboard can be expected to take.
    bool canCopy() const;

    /// Marks the whole text until the user goes on to something else.
    void selectAll();
    bool isAllSelected() const { return isAllSelected_; }

    /// Puts the whole text on the clipboard as soon as it is read, as the file has it: hidden characters are
    /// themselves and what cannot be read is U+FFFD. Does nothing where it cannot be copied.
    void copy();

    /// Goes so many lines down, or up where negative, as far as lines have been read.
    void scrollByLines(std::int64_t count);

    /// Goes to the line that this byte belongs to, as soon as it is read.
    void goTo(std::uint64_t offset);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void deselect();
    void request(std::uint64_t offset, bool goesThere);
    void take(TextBlock block, std::uint64_t offset, bool goesThere);
    void actOnSlider(int action);
    void moveTo(std::size_t line);
    void updateBars();
    void readAheadIfNeeded();
    std::size_t rowsSeen() const;
    std::size_t lastTopLine() const;
    std::uint64_t bytesOfStep() const;

    std::shared_ptr<const OpenedFile> file_;
    TextEncoding encoding_ = TextEncoding::utf8;
    TextBlock block_;
    std::size_t topLine_ = 0;
    std::uint64_t requestedOffset_ = 0;
    bool isReading_ = false;
    bool isAllSelected_ = false;
    BackgroundWork copying_;
    BackgroundWork reading_;
    std::function<void(std::error_code)> failed_;
};

} // namespace tolvane::platform
