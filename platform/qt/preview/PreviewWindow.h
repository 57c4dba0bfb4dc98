#pragma once

#include "platform/qt/application/BackgroundWork.h"
#include "platform/qt/preview/DecoderProcess.h"
#include "platform/qt/preview/FactsView.h"
#include "platform/qt/preview/FileText.h"
#include "platform/qt/preview/FolderCount.h"
#include "platform/qt/preview/ItemExamination.h"
#include "platform/qt/preview/PageBar.h"
#include "platform/qt/preview/PictureView.h"
#include "platform/qt/text/TextViewWidget.h"
#include "platform/qt/windows/MainWindow.h"
#include "platform/services/FileContents.h"
#include "platform/values/URL.h"

#include <QLabel>
#include <QMainWindow>
#include <QShortcut>
#include <QStackedWidget>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

namespace tolvane::platform {

class QtApplication;

/// The preview window: examines an item and shows it as suits its kind. Slow work runs on worker threads or
/// in the decoder program, and ends when the window is hidden or shows another item. Space and Escape hide
/// it.
class PreviewWindow final : public MainWindow {
public:
    /// The form puts the menus into the window. `application` outlives it.
    PreviewWindow(
        QtApplication& application,
        const std::function<void(QMainWindow&)>& form,
        std::shared_ptr<const FileContents> files,
        DecoderSettings settings);

    /// Shows an item. If it is shown already and unchanged, the view stays as the user left it.
    void preview(const URL& url);

    /// Shows a sentence instead of an item.
    void previewNothing(const QString& sentence);

    /// Called when the window becomes active again.
    void onReturn(std::function<void()> function) { returned_ = std::move(function); }

    /// The next activation is the caller's own and is not reported.
    void expectActivation() { wasInactive_ = false; }

    bool eventFilter(QObject* watched, QEvent* event) override;

    bool isShowingText() const { return pages_.currentWidget() == &text_; }
    bool isShowingPicture() const { return pages_.currentWidget() == &picture_; }
    bool isShowingPages() const { return isShowingPicture() && !pageBar_.isHidden(); }
    QString caption() const { return caption_.text(); }
    FactsView& facts() { return facts_; }
    TextViewWidget& text() { return text_; }
    PictureView& picture() { return picture_; }
    PageBar& pageBar() { return pageBar_; }

protected:
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void arrange();
    void addKeys();
    void showTitle(const QString& name);
    void stop();
    void showPart(QWidget& part);
    void take(ItemExamination examination);
    void present();
    void presentFacts(const QString& message, bool withBytes);
    void presentText();
    void showText(const FileText& text);
    void clearText();
    void presentFolder();
    void showCount(const FolderCount& count, bool isFinal);
    void decode(int page);
    void takeDescription(const DecodedDescription& description);
    void takeFrame(const DecodedFrame& frame);
    void takeEnd(const DecodedEnd& end);
    void beginCaption();
    void addToCaption(const QString& text);
    QSize largestPicture() const;

    std::shared_ptr<const FileContents> files_;
    DecoderSettings settings_;
    std::function<void()> returned_;
    bool wasInactive_ = false;

    QStackedWidget& pages_;
    FactsView& facts_;
    TextViewWidget& text_;
    PictureView& picture_;
    PageBar& pageBar_;
    QLabel& caption_;
    QShortcut& pageDown_;
    QShortcut& pageUp_;

    std::optional<URL> url_;
    std::optional<ItemExamination> item_;
    bool awaitsFirstFrame_ = false;
    BackgroundWork looking_;
    BackgroundWork reading_;
    BackgroundWork counting_;
    std::unique_ptr<DecoderProcess> decoder_;
};

} // namespace tolvane::platform
