#include "platform/qt/preview/QtPreviewPanel.h"

#include "tests/decoder/SamplePictures.h"
#include "tests/platform/qt/Drops.h"
#include "tests/platform/qt/Shell.h"
#include "tests/platform/qt/preview/PreviewTest.h"

#include <QClipboard>
#include <QScrollBar>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::platform {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using tests::eventually;

class Source final : public PreviewPanelDataSource {
public:
    std::size_t numberOfPreviewItemsInPreviewPanel(const PreviewPanel& /*panel*/) override {
        ++asked;
        return item ? 1 : 0;
    }
    URL previewPanel(const PreviewPanel& /*panel*/, std::size_t index) override {
        EXPECT_EQ(index, 0U);
        return *item;
    }

    std::optional<URL> item;
    int asked = 0;
};

class QtPreviewPanelTest : public tests::PreviewTest {
protected:
    static void setUpMenus(QMainWindow& window) {
        QMenu& menu = *window.menuBar()->addMenu("Edit");
        for (const auto& [selector, key] :
             {std::pair("copy:", "Ctrl+C"),
              {"selectAll:", "Ctrl+A"},
              {"performClose:", "Ctrl+W"},
              {"terminate:", "Ctrl+Q"},
              {"incFontSize:", "Ctrl++"}}) {
            tests::addItem(menu, selector).setShortcut(QKeySequence(key));
        }
        window.menuBar()->addMenu("Window")->setObjectName("windowMenu");
    }

    QAction& item(const QString& selector) const {
        for (QAction* const action : window().findChildren<QAction*>()) {
            if (action->property("selector").toString() == selector) {
                return *action;
            }
        }
        throw std::logic_error("no such item");
    }

    void open(const DecoderSettings& settings) {
        panel = std::make_unique<QtPreviewPanel>(shell.application, &setUpMenus, files, settings);
        panel->setDataSource(source);
    }

    void show(const std::string& path) {
        if (panel == nullptr) {
            open(realDecoder());
        }
        source->item = URL::fileURLWithPath(path);
        panel->makeKeyAndOrderFront(nullptr);
    }

    PreviewWindow& window() const { return panel->window(); }
    std::string message() const { return window().facts().message().toStdString(); }
    std::string text() const { return displayedText(*window().text().document()).toStdString(); }
    bool waitForText() const {
        return eventually([&] { return window().isShowingText() && !text().empty(); });
    }
    std::string caption() const { return window().caption().remove(QChar(0x200B)).toStdString(); }

    std::string fact(const QString& label) const { return tests::factIn(window().facts().facts(), label); }

    bool waitForMessage(const std::string& beginning) const {
        return eventually([&] { return message().starts_with(beginning); });
    }

    bool waitForPicture() const {
        return eventually([&] { return window().isShowingPicture() && window().picture().frameCount() > 0; });
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        EXPECT_TRUE(eventually([&] { return window().isActiveWindow(); }));
        QWidget* const target = window().focusWidget();
        QTest::keyClick(target != nullptr ? target : &window(), key, modifiers);
    }

    void leaveAndReturn() const {
        QWidget other;
        other.show();
        other.activateWindow();
        ASSERT_TRUE(eventually([&] { return !window().isActiveWindow(); }));
        window().activateWindow();
        ASSERT_TRUE(eventually([&] { return window().isActiveWindow(); }));
    }

    static std::string clipboard() { return QGuiApplication::clipboard()->text().toStdString(); }

    tests::Shell shell;
    std::shared_ptr<tests::CountedFiles> files = std::make_shared<tests::CountedFiles>();
    std::shared_ptr<Source> source = std::make_shared<Source>();
    std::unique_ptr<QtPreviewPanel> panel;
};

TEST_F(QtPreviewPanelTest, showsAPicture) {
    show(folder.file("picture", tests::pictureBytes("PNG", {64, 48})));
    ASSERT_TRUE(waitForPicture());
    EXPECT_TRUE(eventually([&] { return caption().starts_with("PNG picture, 64 × 48 pixels — "); }))
        << caption();
    EXPECT_FALSE(window().isShowingPages());
    const QImage image = window().grab().toImage();
    EXPECT_EQ(image.pixelColor(window().picture().geometry().center()), QColor(255, 0, 0));
}

TEST_F(QtPreviewPanelTest, showsAnAnimation) {
    show(folder.file("a.gif", tests::gifBytes({8, 8}, {8, 8}, 3, 2)));
    ASSERT_TRUE(waitForPicture());
    EXPECT_TRUE(eventually([&] { return window().picture().shownFrame() == 2; }));
    EXPECT_TRUE(eventually([&] { return window().picture().shownFrame() == 0; })) << "over and over";
    EXPECT_THAT(caption(), HasSubstr("3 frames"));
}

TEST_F(QtPreviewPanelTest, showsADrawing) {
    show(folder.file("d.svg", tests::svgBytes(R"(<rect width="100" height="50" fill="red"/>)")));
    ASSERT_TRUE(waitForPicture());
}

TEST_F(QtPreviewPanelTest, turnsThePagesOfADocument) {
    show(folder.file("d", tests::pdfBytes(3)));
    ASSERT_TRUE(waitForPicture());
    EXPECT_TRUE(window().isShowingPages());
    EXPECT_EQ(window().pageBar().text(), QStringLiteral("Page 1 of 3"));
    EXPECT_THAT(caption(), StartsWith("PDF document, page of 200 × 100 points"));
    press(Qt::Key_PageDown);
    EXPECT_EQ(window().pageBar().page(), 2);
    press(Qt::Key_PageUp);
    EXPECT_EQ(window().pageBar().page(), 1);
    window().pageBar().turn(1);
    EXPECT_EQ(window().pageBar().page(), 2);
    ASSERT_TRUE(waitForPicture());
    window().pageBar().turn(100);
    EXPECT_EQ(window().pageBar().text(), QStringLiteral("Page 3 of 3"));
    window().pageBar().turn(-1);
    EXPECT_EQ(window().pageBar().text(), QStringLiteral("Page 2 of 3"));
    EXPECT_TRUE(window().isShowingPages());
}

TEST_F(QtPreviewPanelTest, showsTextWithHiddenCharactersByName) {
    show(folder.file("t.png", "Only its name is a picture's.\n"));
    ASSERT_TRUE(waitForText());
    EXPECT_EQ(text(), "Only its name is a picture's.\n");
    EXPECT_EQ(caption(), "Text in UTF-8 — 30 bytes");
    show(folder.file("t", "a\x1B[0m\x7F \u202Eb\u200Bc\u0085d\tx\xFF\uFEFF"));
    EXPECT_TRUE(eventually([&] {
        return text() == "a⟨ESC⟩[0m⟨DEL⟩ ⟨U+202E⟩b⟨U+200B⟩c⟨U+0085⟩d\tx\uFFFD⟨U+FEFF⟩";
    })) << text();
}

TEST_F(QtPreviewPanelTest, showsTheFrontOfAHugeText) {
    const std::string path = folder.file("huge", std::string(5000, 'x') + "\n");
    std::filesystem::resize_file(path, 10'000'000'000);
    show(path);
    ASSERT_TRUE(waitForText());
    EXPECT_THAT(text(), StartsWith(std::string(5000, 'x') + "\n⟨NUL⟩⟨NUL⟩"));
    EXPECT_EQ(
        caption(), "Text in UTF-8 — 10,000,000,000 bytes (10.00 GB)\n"
                   "Only the first 55,001 of 10,000,000,000 bytes are shown.");
    EXPECT_LE(files->bytesRead(), longestFileText + examinedFrontLength);
}

TEST_F(QtPreviewPanelTest, showsAsTextWhatOnlyBeginsLikeAPicture) {
    show(folder.file("t", "P5 is no picture here.\n"));
    ASSERT_TRUE(eventually([&] { return window().isShowingText() || !message().starts_with("Decoding"); }));
    show(folder.file("t2", "<html>about <svg in text</html>\n"));
    EXPECT_TRUE(waitForText());
}

TEST_F(QtPreviewPanelTest, countsAFolderOfManyEntries) {
    folder.folder("many");
    for (int index = 0; index < 20'000; ++index) {
        folder.file("many/" + std::to_string(index), index % 2 == 0 ? "x" : "");
    }
    show(folder.path("many"));
    EXPECT_TRUE(eventually([&] { return fact("Entries") == "20,000"; }));
    EXPECT_EQ(fact("Size of all files"), "10,000 bytes (10.00 kB)");
    EXPECT_EQ(fact("Kind"), "Folder");
    EXPECT_EQ(files->filesOpened(), 0);
}

TEST_F(QtPreviewPanelTest, showsAndCopiesTheFirstBytesOfTheRest) {
    show(folder.file("data", std::string("\0\1\2\3", 4) + std::string(9000, '\xEE')));
    ASSERT_TRUE(eventually([&] { return !window().facts().bytesText().isEmpty(); }));
    EXPECT_TRUE(window().facts().bytesText().startsWith(QStringLiteral("00000000  00 01 02 03 ee")));
    EXPECT_EQ(window().facts().bytesText().count(u'\n'), 255);
    EXPECT_EQ(fact("Size"), "9,004 bytes (9.00 kB)");
    EXPECT_EQ(message(), "");
    EXPECT_TRUE(eventually([&] { return window().isActiveWindow(); }));
    auto* const bytes = window().facts().findChild<QPlainTextEdit*>();
    bytes->setFocus();
    EXPECT_TRUE(eventually([&] { return bytes->hasFocus(); }));
    item("selectAll:").trigger();
    item("copy:").trigger();
    EXPECT_EQ(clipboard(), window().facts().bytesText().toStdString());
}

TEST_F(QtPreviewPanelTest, opensNoFifoSocketOrDevice) {
    for (const auto& [path, word] :
         {std::pair(folder.fifo("fifo"), "FIFO"),
          {folder.socket("socket"), "socket"},
          {std::string("/dev/zero"), "character device"},
          {folder.symlink("link", "fifo"), "FIFO"}}) {
        show(path);
        EXPECT_TRUE(waitForMessage("Only regular files can be previewed; this is a " + std::string(word)));
    }
    EXPECT_EQ(files->filesOpened(), 0);
}

TEST_F(QtPreviewPanelTest, showsWhereALinkLeads) {
    folder.file("target", "Text.\n");
    show(folder.symlink("link", "target"));
    ASSERT_TRUE(eventually([&] { return window().isShowingText(); }));
    EXPECT_THAT(caption(), StartsWith("Symbolic link to target\nText in UTF-8"));
    EXPECT_EQ(window().windowTitle(), QStringLiteral("link — Preview"));
    show(folder.symlink("dangling", "nowhere"));
    EXPECT_TRUE(waitForMessage("The target of the symbolic link cannot be accessed: "));
    EXPECT_EQ(fact("Kind"), "Symbolic link");
}

TEST_F(QtPreviewPanelTest, showsWhyAnItemIsNotShown) {
    show(folder.path("missing"));
    EXPECT_TRUE(waitForMessage("The item cannot be accessed: No such file"));
    show(folder.file("empty"));
    EXPECT_TRUE(waitForMessage("The file is empty."));
    const std::string png = tests::pictureBytes("PNG", {300, 300});
    show(folder.file("damaged", png.substr(0, png.size() / 2)));
    EXPECT_TRUE(waitForMessage("The picture is damaged"));
    EXPECT_FALSE(window().facts().bytesText().isEmpty());
    show(folder.file("locked", tests::pdfBytes(1, true)));
    EXPECT_TRUE(waitForMessage("The PDF document is encrypted"));
    show(folder.file("bomb", tests::hugePng(60'000, 10)));
    EXPECT_TRUE(waitForMessage("The picture is too large"));
    source->item = URL::fromText("http://localhost/");
    panel->makeKeyAndOrderFront(nullptr);
    EXPECT_TRUE(waitForMessage("This URL does not name a file: http://localhost/"));
}

TEST_F(QtPreviewPanelTest, showsNamesThatTryToDeceiveAsTheyAre) {
    show(folder.file("a\xE2\x80\xAEgnp.[*]\n<b>\xFF", "x"));
    EXPECT_EQ(window().windowTitle().toStdString(), "a⟨U+202E⟩gnp.[*][*]⟨LF⟩<b>\xEF\xBF\xBD — Preview");
    EXPECT_TRUE(eventually([&] { return window().isShowingText(); }));
}

TEST_F(QtPreviewPanelTest, endsTheDecoderWhenItIsClosedOrShowsSomethingElse) {
    const std::string note = folder.path("process");
    open(scriptedDecoder("echo $$ >" + note + ".new; mv " + note + ".new " + note + "; exec sleep 1000"));
    const auto decoderEnds = [&](const std::function<void()>& act) {
        ASSERT_TRUE(eventually([&] { return std::filesystem::exists(note); }));
        const pid_t id = std::stoi(tests::contentsOfFile(note));
        std::filesystem::remove(note);
        act();
        EXPECT_TRUE(eventually([&] { return kill(id, 0) != 0 && errno == ESRCH; }));
    };
    const std::string picture = folder.file("p", tests::pictureBytes("PNG", {3, 3}));
    show(picture);
    decoderEnds([&] { show(folder.path()); });
    show(picture);
    decoderEnds([&] { window().close(); });
    show(picture);
    decoderEnds([&] { panel = nullptr; });
}

TEST_F(QtPreviewPanelTest, isClosedBySpaceEscapeAndTheMenusKey) {
    for (const auto& [key, modifiers] :
         {std::pair(Qt::Key_Space, Qt::NoModifier),
          {Qt::Key_Escape, Qt::NoModifier},
          {Qt::Key_W, Qt::ControlModifier}}) {
        for (const std::string& path :
             {folder.file("t", "Text.\n"), folder.file("h", std::string(99, '\0')),
              folder.file("d", tests::pdfBytes(2))}) {
            show(path);
            ASSERT_TRUE(eventually([&] {
                return window().isShowingText() || window().isShowingPages()
                       || !window().facts().bytesText().isEmpty();
            }));
            EXPECT_TRUE(window().isVisible());
            press(key, modifiers);
            EXPECT_FALSE(window().isVisible()) << path << ' ' << key;
        }
    }
}

TEST_F(QtPreviewPanelTest, isListedAmongTheWindows) {
    show(folder.file("a & b", "Text.\n"));
    MainWindow other(shell.application, "Other");
    setUpMenus(other);
    other.formIsComplete();
    other.show();
    for (MainWindow* const listing : {&other, static_cast<MainWindow*>(&window())}) {
        auto& menu = *listing->findChild<QMenu*>("windowMenu");
        emit menu.aboutToShow();
        EXPECT_THAT(tests::itemsOf(menu), testing::UnorderedElementsAre("a && b — Preview", ""));
    }
}

TEST_F(QtPreviewPanelTest, takesDroppedFiles) {
    show(folder.file("t", "Text.\n"));
    ASSERT_TRUE(eventually([&] { return window().isShowingText(); }));
    tests::dropFiles("file:///a%FF\r\n", window());
    EXPECT_THAT(shell.opened, testing::ElementsAre(URL::fileURLWithPath("/a\xFF")));
    for (const QWidget* const part : window().findChildren<QWidget*>()) {
        EXPECT_FALSE(part->acceptDrops() && part->isVisible()) << part->metaObject()->className();
    }
}

TEST_F(QtPreviewPanelTest, copiesTextWithItsHiddenCharactersFromAnyEncoding) {
    const std::string bytes = "a\tb\r\n\u202E hidden \U0001F600\n" + std::string(500'000, 'x') + "\nend\n";
    std::string copied = bytes;
    copied.erase(copied.find('\r'), 1);
    show(folder.file("t", bytes));
    ASSERT_TRUE(waitForText());
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), copied) << "without a selection it is all";
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(window().text().textCursor().hasSelection());
    press(Qt::Key_Home, Qt::ControlModifier);
    press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "a");
    item("selectAll:").trigger();
    item("copy:").trigger();
    EXPECT_EQ(clipboard(), copied);
    show(folder.file("utf-16", std::string("\xFE\xFF\0a\xD8\x3D\xDE\x00\0\n", 10)));
    ASSERT_TRUE(eventually([&] { return text() == "a\U0001F600\n"; }));
    item("copy:").trigger();
    EXPECT_EQ(clipboard(), "a\U0001F600\n");
}

TEST_F(QtPreviewPanelTest, asksAgainWhenItBecomesActiveAgain) {
    show(folder.file("one", "One.\n"));
    ASSERT_TRUE(eventually([&] { return window().isActiveWindow() && window().isShowingText(); }));
    EXPECT_EQ(source->asked, 1) << "becoming active for the first time is no return";
    source->item = URL::fileURLWithPath(folder.file("two", "Two.\n"));
    leaveAndReturn();
    ASSERT_TRUE(eventually([&] { return text() == "Two.\n"; }));
    EXPECT_EQ(source->asked, 2);
    EXPECT_EQ(window().windowTitle(), QStringLiteral("two — Preview"));
}

TEST_F(QtPreviewPanelTest, goesOnWhenWhoAskedForItIsGone) {
    show(folder.file("t", "Text.\n"));
    ASSERT_TRUE(waitForText());
    source.reset();
    leaveAndReturn();
    QCoreApplication::processEvents();
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(text(), "Text.\n");
    EXPECT_EQ(window().windowTitle(), QStringLiteral("t — Preview"));
}

TEST_F(QtPreviewPanelTest, keepsItsPlaceWhereTheItemHasNotChanged) {
    std::string lines;
    for (int line = 0; line < 1000; ++line) {
        lines += std::to_string(line) + "\n";
    }
    show(folder.file("t", lines));
    ASSERT_TRUE(eventually([&] { return text().starts_with("0\n"); }));
    QScrollBar& bar = *window().text().verticalScrollBar();
    bar.setValue(500);
    const int opened = files->filesOpened();
    panel->makeKeyAndOrderFront(nullptr);
    ASSERT_TRUE(eventually([&] { return files->filesOpened() > opened; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(bar.value(), 500);
    folder.file("t", "Changed.\n");
    panel->makeKeyAndOrderFront(nullptr);
    EXPECT_TRUE(eventually([&] { return text() == "Changed.\n"; }));
}

TEST_F(QtPreviewPanelTest, forgetsWhatItShowedWhenItIsClosed) {
    show(folder.file("t", "Text.\n"));
    ASSERT_TRUE(waitForText());
    window().close();
    EXPECT_TRUE(text().empty());
    EXPECT_FALSE(window().isVisible());
    show(folder.path("t"));
    EXPECT_TRUE(waitForText());
    EXPECT_EQ(source->asked, 2);
}

TEST_F(QtPreviewPanelTest, keepsNoOneAlive) {
    show(folder.file("t", "Text.\n"));
    const auto delegate = std::make_shared<PreviewPanelDelegate>();
    panel->setDelegate(delegate);
    EXPECT_EQ(delegate.use_count(), 1);
    const std::weak_ptr<Source> watched = source;
    source = nullptr;
    EXPECT_TRUE(watched.expired());
    panel->makeKeyAndOrderFront(nullptr);
    EXPECT_EQ(message(), "What was previewed here has been closed.");
    EXPECT_TRUE(text().empty());
}

TEST_F(QtPreviewPanelTest, reportsThatThereIsNothing) {
    open(realDecoder());
    panel->makeKeyAndOrderFront(nullptr);
    EXPECT_EQ(message(), "No preview is available.");
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(window().testAttribute(Qt::WA_QuitOnClose)) << "the program goes on until it is closed";
}

TEST_F(QtPreviewPanelTest, isOneForAll) {
    QtPreviewPanels panels(shell.application, &setUpMenus, files, realDecoder());
    const auto first = panels.sharedPreviewPanel();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first, panels.sharedPreviewPanel());
}

} // namespace
} // namespace tolvane::platform
