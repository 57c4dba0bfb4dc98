#include "platform/qt/application/QtDocumentController.h"

#include "platform/model/Document.h"
#include "platform/model/WindowController.h"
#include "tests/platform/qt/Shell.h"
#include "tests/support/NumberedItems.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTest>
#include <QWidget>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <memory>

namespace tolvane::tests {
namespace {

using platform::URL;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

URL fileURL(const std::string& path) {
    return URL::fileURLWithPath(path);
}

class PlainDocument final : public platform::Document {
public:
    explicit PlainDocument(bool readable) : readable_(readable) {}

    bool readFromURL(const URL& /*url*/, std::string_view /*typeName*/, platform::Error* error) override {
        if (!readable_ && error != nullptr) {
            *error = platform::posixError(EIO);
        }
        return readable_;
    }
    void makeWindowControllers() override {
        addWindowController(platform::WindowController::make(std::make_shared<platform::Window>(), nullptr));
    }

private:
    bool readable_;
};

class QtDocumentControllerTest : public testing::Test {
protected:
    QtDocumentControllerTest() { items.identities = {{"/a", 1}, {"/b", 2}, {"/f", 3}, {"/f/", 3}}; }

    std::shared_ptr<platform::Document> open(const std::string& path) {
        return controller.openDocumentWithContentsOfURL(fileURL(path)).value_or(nullptr);
    }
    void openAll(const std::vector<URL>& urls) {
        controller.openDocuments(urls);
        while (controller.isOpening()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
    static platform::Window& windowOf(const platform::Document& document) {
        return *document.windowControllers().front()->window();
    }

    Shell shell;
    NumberedItems items;
    bool readable = true;
    std::vector<std::string> errors;
    std::vector<std::string> details;
    std::vector<URL> chosen;
    platform::QtDocumentController controller{
        {items, shell.recentDocuments, [this] { return std::make_shared<PlainDocument>(readable); },
         [this](const std::string& message, const std::string& reason, const std::string& more) {
             errors.push_back(message + "|" + reason);
             details.push_back(more);
         },
         [this](const std::function<void(const std::vector<URL>&)>& handler) { handler(chosen); }}};
};

TEST_F(QtDocumentControllerTest, bringsAFileThatIsOpenToTheFront) {
    const auto document = open("/a");
    open("/b");
    int raised = 0;
    const auto front = windowOf(*document).observeOrderFront([&] { ++raised; });
    EXPECT_EQ(open("/a"), document);
    EXPECT_EQ(raised, 1);
    EXPECT_THAT(controller.documents(), SizeIs(2));
    EXPECT_EQ(open("/f/"), open("/f")) << "the same folder";
}

TEST_F(QtDocumentControllerTest, keepsADocumentUntilItsWindowIsClosed) {
    const std::weak_ptr<platform::Document> first = open("/a");
    open("/b");
    ASSERT_FALSE(first.expired());
    EXPECT_TRUE(windowOf(*first.lock()).isVisible());
    windowOf(*first.lock()).close();
    EXPECT_FALSE(first.expired()) << "its window is still closing";
    QCoreApplication::processEvents();
    EXPECT_TRUE(first.expired());
    EXPECT_THAT(controller.documents(), SizeIs(1));
}

TEST_F(QtDocumentControllerTest, opensAClosedFileAnew) {
    const auto closed = open("/a");
    windowOf(*closed).close();
    const auto opened = open("/a");
    EXPECT_NE(opened, closed);
    QCoreApplication::processEvents();
    EXPECT_THAT(controller.documents(), ElementsAre(opened));
    EXPECT_TRUE(windowOf(*opened).isVisible());
}

TEST_F(QtDocumentControllerTest, makesNoDocumentForWhatIsNotThere) {
    const auto document = controller.openDocumentWithContentsOfURL(fileURL("/nowhere"));
    ASSERT_FALSE(document);
    EXPECT_EQ(document.error().code, ENOENT);
    EXPECT_THAT(controller.documents(), IsEmpty());
    EXPECT_THAT(shell.recentDocuments.documents(), IsEmpty());
}

TEST_F(QtDocumentControllerTest, opensTheFirstOfSeveralAtOnceAndTheOthersInTheirOrder) {
    items.identities = {{"/a", 1}, {"/b", 2}, {"/c", 3}, {"/d", 4}};
    controller.openDocuments({fileURL("/no"), fileURL("/a"), fileURL("/b")});
    EXPECT_THAT(controller.documents(), SizeIs(1));
    EXPECT_TRUE(controller.isOpening());
    EXPECT_THAT(errors, IsEmpty());
    openAll({fileURL("/nowhere"), fileURL("/c"), fileURL("/d")});
    std::vector<std::string> titles;
    for (const auto& document : controller.documents()) {
        titles.push_back(windowOf(*document).title());
    }
    EXPECT_THAT(titles, ElementsAre("a", "b", "c", "d"));
    ASSERT_THAT(errors, SizeIs(1));
    EXPECT_THAT(errors.front(), HasSubstr("2 items could not be opened."));
}

TEST_F(QtDocumentControllerTest, opensTheOthersOnceAWindowWasPainted) {
    controller.openDocuments({fileURL("/a"), fileURL("/b")});
    QWidget window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTest::qWait(0);
    EXPECT_FALSE(controller.isOpening());
    EXPECT_THAT(controller.documents(), SizeIs(2));
}

TEST_F(QtDocumentControllerTest, opensNoMoreWhenToldToQuit) {
    controller.openDocuments({fileURL("/a"), fileURL("/b")});
    QEvent quit(QEvent::Quit);
    QObject receiver;
    QCoreApplication::sendEvent(&receiver, &quit);
    EXPECT_FALSE(controller.isOpening());
    openAll({fileURL("/f")});
    EXPECT_THAT(controller.documents(), SizeIs(2)) << "those of before the end are forgotten";
}

TEST_F(QtDocumentControllerTest, reportsAFileThatCannotBeOpened) {
    openAll({fileURL("/a"), fileURL("/no/n\xff\nx")});
    EXPECT_THAT(
        errors, ElementsAre("“n\xef\xbf\xbd\nx” could not be opened.|No such file or directory\n"
                            "/no/n\xef\xbf\xbd⟨LF⟩x"));
    EXPECT_THAT(details, ElementsAre(""));
    EXPECT_THAT(controller.documents(), SizeIs(1));
    controller.openDocuments({fileURL("/b")});
    controller.openDocuments({});
    EXPECT_THAT(errors, SizeIs(1));
}

TEST_F(QtDocumentControllerTest, reportsAllFilesThatCannotBeOpenedInOne) {
    readable = false;
    controller.openDocuments({fileURL("/no"), fileURL("/a"), fileURL("/d/n\nx")});
    EXPECT_THAT(
        errors, ElementsAre("3 items could not be opened.|“no”: No such file or directory\n"
                            "“a”: Input/output error\n“n⟨LF⟩x”: No such file or directory"));
    EXPECT_THAT(
        details, ElementsAre("/no: No such file or directory\n/a: Input/output error\n"
                             "/d/n⟨LF⟩x: No such file or directory\n"));
    EXPECT_THAT(controller.documents(), IsEmpty());
}

TEST_F(QtDocumentControllerTest, namesTenFilesAtOnceAndEveryOneInTheDetails) {
    constexpr int count = 1'000;
    std::vector<URL> urls;
    urls.reserve(count);
    for (int number = 0; number < count; ++number) {
        urls.push_back(fileURL("/" + std::string(200, 'x') + std::to_string(number)));
    }
    controller.openDocuments(urls);
    ASSERT_THAT(errors, SizeIs(1));
    EXPECT_EQ(std::ranges::count(errors.front(), '\n'), 10);
    EXPECT_LT(errors.front().size(), 1'200U) << "or it would be cut";
    EXPECT_THAT(errors.front(), HasSubstr("1000 items could not be opened."));
    EXPECT_THAT(errors.front(), HasSubstr("x9”: No such file or directory\nand 990 more"));
    for (const URL& url : urls) {
        EXPECT_THAT(details.front(), HasSubstr(url.path() + ": No such file or directory\n"));
    }
}

TEST_F(QtDocumentControllerTest, remembersWhatWasOpened) {
    open("/a");
    open("/b");
    open("/a");
    EXPECT_THAT(shell.recentDocuments.documents(), ElementsAre(fileURL("/a"), fileURL("/b")));
}

TEST_F(QtDocumentControllerTest, opensWhatItsUserChooses) {
    chosen = {fileURL("/b"), fileURL("/a")};
    controller.actionForSelector("openDocument:")(nullptr);
    openAll({});
    EXPECT_THAT(controller.documents(), SizeIs(2));
    EXPECT_FALSE(controller.actionForSelector("openDocuments:"));
}

class ReopenDocument : public QtDocumentControllerTest {
protected:
    const std::shared_ptr<platform::Document> document = open("/a");
    const std::shared_ptr<platform::Window> window = document->windowControllers().front()->window();
};

TEST_F(ReopenDocument, givesTheWindowToANewDocument) {
    int closed = 0;
    const auto closing = window->observeWillClose([&] { ++closed; });
    const auto reopened = controller.reopenDocument(document).value();
    EXPECT_NE(reopened, document);
    EXPECT_THAT(controller.documents(), ElementsAre(reopened));
    EXPECT_EQ(reopened->windowControllers().front()->window(), window);
    EXPECT_EQ(window->windowController()->document(), reopened);
    EXPECT_TRUE(document->windowControllers().empty());
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(closed, 0);
    EXPECT_EQ(open("/a"), reopened);
}

TEST_F(ReopenDocument, letsGoOfTheNewDocumentWithItsWindow) {
    const auto other = open("/b");
    const std::weak_ptr<platform::Document> reopened = controller.reopenDocument(document).value();
    // After this nothing is left of the document that the window had before.
    windowOf(*other).close();
    QCoreApplication::processEvents();
    ASSERT_FALSE(reopened.expired());
    window->close();
    QCoreApplication::processEvents();
    EXPECT_TRUE(reopened.expired());
    EXPECT_THAT(controller.documents(), IsEmpty());
}

TEST_F(ReopenDocument, remembersTheItemThatIsThereNow) {
    items.identities = {{"/a", 2}};
    const auto reopened = controller.reopenDocument(document).value();
    const auto* const key = "NSURLFileResourceIdentifierKey";
    ASSERT_NE(reopened->fileURL()->keptResourceValue(key), nullptr);
    EXPECT_NE(*reopened->fileURL()->keptResourceValue(key), *document->fileURL()->keptResourceValue(key));
}

TEST_F(ReopenDocument, leavesEverythingWhereTheItemIsGone) {
    items.identities.clear();
    EXPECT_FALSE(controller.reopenDocument(document));
    EXPECT_THAT(controller.documents(), ElementsAre(document));
    EXPECT_EQ(window->windowController()->document(), document);
    EXPECT_TRUE(window->isVisible());
}

} // namespace
} // namespace tolvane::tests
