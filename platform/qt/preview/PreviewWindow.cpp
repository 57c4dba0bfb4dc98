#include "platform/qt/preview/PreviewWindow.h"

#include "platform/qt/application/MakeChild.h"
#include "platform/qt/text/VisibleText.h"

#include <QEvent>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QHideEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

namespace tolvane::platform {

namespace {

using namespace Qt::StringLiterals;

constexpr QSize usualSize(780, 580);
constexpr QSize smallestSize(320, 240);

QStyle::StandardPixmap iconOf(const ItemExamination& item) {
    if (!item.target) {
        return item.item ? QStyle::SP_FileLinkIcon : QStyle::SP_MessageBoxWarning;
    }
    return item.isFolder() ? QStyle::SP_DirIcon : QStyle::SP_FileIcon;
}

QString nameOf(TextEncoding encoding) {
    switch (encoding) {
    case TextEncoding::utf8:
        return u"UTF-8"_s;
    case TextEncoding::utf16LittleEndian:
        return u"UTF-16, little-endian"_s;
    case TextEncoding::utf16BigEndian:
        break;
    }
    return u"UTF-16, big-endian"_s;
}

QString describedAs(const DecodedDescription& description) {
    const QString format = visibleText(description.format.toStdString());
    const bool isPage = description.contents == DecodedDescription::Contents::pdfPage;
    QString text = isPage ? u"%1 document, page of %2 × %3 points"_s : u"%1 picture, %2 × %3 pixels"_s;
    text = text.arg(format).arg(description.width).arg(description.height);
    if (description.frames > 1) {
        text += u", %1 frames"_s.arg(description.frames);
    }
    return text;
}

} // namespace

PreviewWindow::PreviewWindow(
    QtApplication& application,
    const std::function<void(QMainWindow&)>& form,
    std::shared_ptr<const FileContents> files,
    DecoderSettings settings)
    : MainWindow(application, "Preview")
    , files_(std::move(files))
    , settings_(std::move(settings))
    , pages_(makeChild<QStackedWidget>(this))
    , facts_(makeChild<FactsView>(&pages_))
    , text_(makeChild<TextViewWidget>(&pages_))
    , picture_(makeChild<PictureView>(&pages_))
    , pageBar_(makeChild<PageBar>(this))
    , caption_(makeChild<QLabel>(this))
    , pageDown_(makeChild<QShortcut>(QKeySequence(Qt::Key_PageDown), this))
    , pageUp_(makeChild<QShortcut>(QKeySequence(Qt::Key_PageUp), this)) {
    setAccessibleName(u"Preview"_s);
    setMinimumSize(smallestSize);
    resize(usualSize);
    form(*this);
    arrange();
    formIsComplete();
    pageBar_.onTurn([this](int page) { decode(page); });
    addKeys();
    stop();
    showTitle({});
}

void PreviewWindow::arrange() {
    for (QWidget* const part :
         {static_cast<QWidget*>(&facts_), static_cast<QWidget*>(&text_), static_cast<QWidget*>(&picture_)}) {
        pages_.addWidget(part);
    }
    constexpr int margin = 8;
    constexpr int tabWidth = 8;
    text_.setReadOnly(true);
    text_.setAcceptDrops(false);
    text_.setFrameShape(QFrame::NoFrame);
    text_.setLineWrapMode(QPlainTextEdit::NoWrap);
    text_.setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text_.setTabStopDistance(tabWidth * QFontMetricsF(text_.font()).horizontalAdvance(u' '));
    text_.document()->setDocumentMargin(margin);
    text_.setAccessibleName(u"Text of the file"_s);
    text_.installEventFilter(this);
    caption_.setTextFormat(Qt::PlainText);
    caption_.setWordWrap(true);
    caption_.setAlignment(Qt::AlignCenter);
    caption_.setContentsMargins(margin, margin, margin, margin);
    caption_.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto& content = makeChild<QWidget>(this);
    auto& rows = makeChild<QVBoxLayout>(&content);
    rows.setContentsMargins(0, 0, 0, 0);
    rows.setSpacing(0);
    rows.addWidget(&pages_, 1);
    rows.addWidget(&pageBar_);
    rows.addWidget(&caption_);
    setCentralWidget(&content);
}

void PreviewWindow::addKeys() {
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Escape}) {
        auto& shortcut = makeChild<QShortcut>(QKeySequence(key), this);
        QObject::connect(&shortcut, &QShortcut::activated, this, [this] { close(); });
    }
    QObject::connect(&pageDown_, &QShortcut::activated, this, [this] { pageBar_.turn(1); });
    QObject::connect(&pageUp_, &QShortcut::activated, this, [this] { pageBar_.turn(-1); });
}

/// Distinguishes the window from others of the same item.
void PreviewWindow::showTitle(const QString& name) {
    // Qt takes "[*]" for a placeholder unless it is written twice.
    const QString title = name.isEmpty() ? u"Preview"_s : name + u" — Preview"_s;
    setWindowTitle(QString(title).replace(u"[*]"_s, u"[*][*]"_s));
}

bool PreviewWindow::eventFilter(QObject* watched, QEvent* event) {
    // A text widget takes the keys that type, although this one is read-only: Space closes.
    if (watched == &text_ && event->type() == QEvent::ShortcutOverride
        && static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Space) {
        return true;
    }
    return MainWindow::eventFilter(watched, event);
}

void PreviewWindow::preview(const URL& url) {
    const auto path = url.fileSystemRepresentation();
    if (!path) {
        previewNothing(u"This URL does not name a file: %1"_s.arg(visibleText(url.absoluteString())));
        return;
    }
    if (!item_ || item_->path != *path) {
        stop();
        showTitle(visibleText(url.lastPathComponent()));
        facts_.setMessage(u"Looking at the item …"_s);
    }
    url_ = url;
    looking_.start([this, files = files_, path = *path](const auto& link) {
        auto examination = examineItem(*files, path);
        link.deliver(
            [this, examination = std::move(examination)]() mutable { take(std::move(examination)); });
    });
}

void PreviewWindow::previewNothing(const QString& sentence) {
    stop();
    showTitle({});
    facts_.setMessage(sentence);
}

void PreviewWindow::stop() {
    looking_.cancel();
    counting_.cancel();
    clearText();
    decoder_ = nullptr;
    url_.reset();
    item_.reset();
    picture_.clear();
    facts_.setMessage({});
    facts_.setFacts({});
    facts_.setBytes({});
    facts_.setIcon({});
    caption_.clear();
    caption_.hide();
    showPart(facts_);
}

void PreviewWindow::showPart(QWidget& part) {
    pages_.setCurrentWidget(&part);
    pageBar_.hide();
    pageDown_.setEnabled(false);
    pageUp_.setEnabled(false);
    if (&part == &text_) {
        text_.setFocus();
    }
}

void PreviewWindow::take(ItemExamination examination) {
    if (item_ && item_->showsTheSameAs(examination)) {
        return;
    }
    const auto url = url_;
    stop();
    url_ = url;
    item_ = std::move(examination);
    present();
}

void PreviewWindow::present() {
    switch (presentationOf(*item_)) {
    case Presentation::text:
        presentText();
        break;
    case Presentation::textUnlessMore:
    case Presentation::decoded:
        presentFacts(u"Decoding …"_s, false);
        decode(1);
        break;
    case Presentation::folder:
        presentFolder();
        break;
    case Presentation::facts:
        presentFacts(obstacleOf(*item_), false);
        break;
    }
}

void PreviewWindow::presentFacts(const QString& message, bool withBytes) {
    clearText();
    facts_.setIcon(style()->standardIcon(iconOf(*item_), nullptr, this));
    facts_.setMessage(message);
    facts_.setFacts(factsOf(*item_));
    facts_.setBytes(withBytes ? std::span<const std::byte>(item_->front) : std::span<const std::byte>());
    showPart(facts_);
}

void PreviewWindow::presentText() {
    beginCaption();
    const TextEncoding encoding = textEncodingOf(item_->front).value_or(TextEncoding::utf8);
    addToCaption(u"Text in %1 — %2"_s.arg(nameOf(encoding), sizeText(item_->target->size)));
    showPart(text_);
    reading_.start([this, file = item_->file, encoding](const auto& link) {
        auto text = readFileText(*file, encoding);
        link.deliver([this, text = std::move(text)] {
            if (text) {
                showText(*text);
            } else {
                presentFacts(
                    u"The file cannot be read: %1."_s.arg(QString::fromLocal8Bit(text.error().message())),
                    true);
            }
        });
    });
}

void PreviewWindow::showText(const FileText& text) {
    text_.setContent(AttributedString(text.text, {}));
    if (!text.isWhole()) {
        addToCaption(u"Only the first %1 of %2 bytes are shown."_s.arg(
            countText(text.length), countText(text.fileSize)));
    }
}

void PreviewWindow::clearText() {
    reading_.cancel();
    text_.setContent({});
}

void PreviewWindow::presentFolder() {
    presentFacts({}, false);
    showCount({}, false);
    counting_.start(
        [this, files = files_, path = item_->path, volume = item_->target->volume](const auto& link) {
            FolderCount latest;
            const auto counted = countFolder(*files, path, volume, [&](const FolderCount& count) {
                latest = count;
                link.deliver([this, count] { showCount(count, false); });
                return !link.isCancelled();
            });
            link.deliver([this, latest, counted] {
                if (counted) {
                    showCount(latest, true);
                } else {
                    facts_.setFacts(factsOf(*item_));
                    facts_.setMessage(u"The folder cannot be read: %1."_s.arg(
                        QString::fromLocal8Bit(counted.error().message())));
                }
            });
        });
}

void PreviewWindow::showCount(const FolderCount& count, bool isFinal) {
    auto facts = factsOf(*item_);
    const QString bound = isFinal ? (count.isComplete ? QString() : u"more than "_s) : u"counting … "_s;
    facts.push_back({u"Entries"_s, bound + countText(count.entries)});
    facts.push_back(
        {u"Including subfolders"_s,
         bound + u"%1 items, %2 of them folders"_s.arg(countText(count.items), countText(count.folders))});
    facts.push_back({u"Size of all files"_s, bound + sizeText(count.size)});
    facts_.setFacts(facts);
    QStringList remarks;
    if (count.unreadableFolders > 0) {
        remarks.append(u"Folders that cannot be read: %1."_s.arg(countText(count.unreadableFolders)));
    }
    if (count.otherVolumes > 0) {
        remarks.append(u"Other volumes, not counted: %1."_s.arg(countText(count.otherVolumes)));
    }
    facts_.setMessage(remarks.join(u' '));
}

void PreviewWindow::decode(int page) {
    awaitsFirstFrame_ = true;
    decoder_ = std::make_unique<DecoderProcess>(
        settings_, DecoderRequest{*url_, page, largestPicture()},
        DecoderProcess::Listener{
            [this](const DecodedDescription& description) { takeDescription(description); },
            [this](const DecodedFrame& frame) { takeFrame(frame); },
            [this](const QString& sentence) { addToCaption(visibleText(sentence.toStdString())); },
            [this](const DecodedEnd& end) { takeEnd(end); }});
}

void PreviewWindow::takeDescription(const DecodedDescription& description) {
    beginCaption();
    addToCaption(describedAs(description) + u" — "_s + sizeText(item_->target->size));
    const bool isDocument = description.contents == DecodedDescription::Contents::pdfPage;
    if (isDocument) {
        pageBar_.setPage(static_cast<int>(description.page), static_cast<int>(description.pages));
    }
    pageBar_.setVisible(isDocument);
    pageDown_.setEnabled(isDocument);
    pageUp_.setEnabled(isDocument);
}

void PreviewWindow::takeFrame(const DecodedFrame& frame) {
    if (awaitsFirstFrame_) {
        awaitsFirstFrame_ = false;
        picture_.clear();
        pages_.setCurrentWidget(&picture_);
    }
    picture_.addFrame(frame.image, frame.delay);
}

void PreviewWindow::takeEnd(const DecodedEnd& end) {
    const QString sentence = visibleText(end.sentence.toStdString());
    if (end.how == DecodedEnd::How::unrecognised) {
        if (presentationOf(*item_) == Presentation::textUnlessMore) {
            presentText();
        } else {
            presentFacts({}, true);
        }
    } else if (!awaitsFirstFrame_) {
        if (!sentence.isEmpty()) {
            addToCaption(sentence);
        }
    } else {
        // Other pages of a document may be intact, so its bar stays.
        const bool hasPages = !pageBar_.isHidden();
        presentFacts(sentence.isEmpty() ? u"The decoder returned no picture."_s : sentence, true);
        pageBar_.setVisible(hasPages);
        pageDown_.setEnabled(hasPages);
        pageUp_.setEnabled(hasPages);
    }
}

/// The item shown may not be the one that was requested.
void PreviewWindow::beginCaption() {
    caption_.clear();
    if (item_->isLink() && item_->destination) {
        addToCaption(u"Symbolic link to %1"_s.arg(visibleText(*item_->destination)));
    }
}

void PreviewWindow::addToCaption(const QString& text) {
    const QString before = caption_.text();
    caption_.setText(before.isEmpty() ? breakableText(text) : before + u'\n' + breakableText(text));
    caption_.show();
}

QSize PreviewWindow::largestPicture() const {
    constexpr int longestEdge = 2400;
    const QSize screenSize = screen()->size() * devicePixelRatioF();
    return screenSize.boundedTo({longestEdge, longestEdge}).expandedTo(usualSize);
}

void PreviewWindow::changeEvent(QEvent* event) {
    MainWindow::changeEvent(event);
    if (event->type() != QEvent::ActivationChange) {
        return;
    }
    if (!isActiveWindow()) {
        wasInactive_ = true;
    } else if (std::exchange(wasInactive_, false) && isVisible() && returned_) {
        returned_();
    }
}

void PreviewWindow::hideEvent(QHideEvent* event) {
    MainWindow::hideEvent(event);
    // Minimising comes from outside; what was shown is then shown again.
    if (!event->spontaneous()) {
        stop();
        wasInactive_ = false;
    }
}

} // namespace tolvane::platform
