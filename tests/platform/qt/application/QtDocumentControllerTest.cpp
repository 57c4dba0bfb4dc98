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

class PlainDocument final : public platform::Document {
public:
    bool readFromURL(const URL& /*url*/, std::string_view /*typeName*/, platform::Error* error) override {
        if (!readable && error != nullptr) {
            *error = platform::posixError(EIO);
        }
        return readable;
    }
    void makeWindowControllers() override {
        addWindowController(platform::WindowController::make(std::make_shared<platform::Window>(), nullptr));
    }
    bool readable = true;
};

class QtDocumentControllerTest : public testing::Test {
protected:
    QtDocumentControllerTest() { items.identities = {{"/a", 1}, {"/b", 2}, {"/f", 3}, {"/f/", 3}}; }

    std::shared_ptr<platform::Document> open(const std::string& path) {
        return controller.openDocumentWithContentsOfURL(URL::fileURLWithPath(path)).value_or(nullptr);
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
        {items, shell.recentDocuments,
         [this] {
             auto document = std::make_shared<PlainDocument>();
             document->readable = readable;
             return document;
         },
         [this](const std::string& message, const std::string& reason, const std::string& more) {
             errors.push_back(message + "|" + reason);
             details.push_back(more);
         },
         [this](const std::function<void(const std::vector<URL>&)>& handler) { handler(chosen); }}};
};

TEST_F(QtDocumentControllerTest, opensADocumentAndKeepsIt) {
    const std::weak_ptr<platform::Document> document = open("/a");
    ASSERT_FALSE(document.expired());
    EXPECT_TRUE(windowOf(*document.lock()).isVisible());
    EXPECT_EQ(windowOf(*document.lock()).title(), "a");
    EXPECT_THAT(controller.documents(), SizeIs(1));
}

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

TEST_F(QtDocumentControllerTest, letsGoOfADocumentWhoseWindowIsClosed) {
    const std::weak_ptr<platform::Document> first = open("/a");
    open("/b");
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
    const auto document = controller.openDocumentWithContentsOfURL(URL::fileURLWithPath("/nowhere"));
    ASSERT_FALSE(document);
    EXPECT_EQ(document.error().code, ENOENT);
    EXPECT_THAT(controller.documents(), IsEmpty());
    EXPECT_THAT(shell.recentDocuments.documents(), IsEmpty());
}

TEST_F(QtDocumentControllerTest, opensTheFirstOfSeveralAtOnceAndTheOthersInTheirOrder) {
    items.identities = {{"/a", 1}, {"/b", 2}, {"/c", 3}, {"/d", 4}};
    controller.openDocuments(
        {URL::fileURLWithPath("/no"), URL::fileURLWithPath("/a"), URL::fileURLWithPath("/b")});
    EXPECT_THAT(controller.documents(), SizeIs(1));
    EXPECT_TRUE(controller.isOpening());
    EXPECT_THAT(errors, IsEmpty());
    openAll({URL::fileURLWithPath("/nowhere"), URL::fileURLWithPath("/c"), URL::fileURLWithPath("/d")});
    std::vector<std::string> titles;
    for (const auto& document : controller.documents()) {
        titles.push_back(windowOf(*document).title());
    }
    EXPECT_THAT(titles, ElementsAre("a", "b", "c", "d"));
    ASSERT_THAT(errors, SizeIs(1));
    EXPECT_THAT(errors.front(), HasSubstr("2 items could not be opened."));
}

TEST_F(QtDocumentControllerTest, opensTheOthersOnceAWindowWasPainted) {
    controller.openDocuments({URL::fileURLWithPath("/a"), URL::fileURLWithPath("/b")});
    QWidget window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTest::qWait(0);
    EXPECT_FALSE(controller.isOpening());
    EXPECT_THAT(controller.documents(), SizeIs(2));
}

TEST_F(QtDocumentControllerTest, opensNoMoreWhenToldToQuit) {
    controller.openDocuments({URL::fileURLWithPath("/a"), URL::fileURLWithPath("/b")});
    QEvent quit(QEvent::Quit);
    QObject receiver;
    QCoreApplication::sendEvent(&receiver, &quit);
    EXPECT_FALSE(controller.isOpening());
    openAll({URL::fileURLWithPath("/f")});
    EXPECT_THAT(controller.documents(), SizeIs(2)) << "those of before the end are forgotten";
}

TEST_F(QtDocumentControllerTest, reportsAFileThatCannotBeOpened) {
    openAll({URL::fileURLWithPath("/a"), URL::fileURLWithPath("/no/n\xff\nx")});
    EXPECT_THAT(
        errors, ElementsAre("“n\xef\xbf\xbd\nx” could not be opened.|No such file or directory\n"
                            "/no/n\xef\xbf\xbd⟨LF⟩x"));
    EXPECT_THAT(details, ElementsAre(""));
    EXPECT_THAT(controller.documents(), SizeIs(1));
    controller.openDocuments({URL::fileURLWithPath("/b")});
    controller.openDocuments({});
    EXPECT_THAT(errors, SizeIs(1));
}

TEST_F(QtDocumentControllerTest, reportsAllFilesThatCannotBeOpenedInOne) {
    readable = false;
    controller.openDocuments(
        {URL::fileURLWithPath("/no"), URL::fileURLWithPath("/a"), URL::fileURLWithPath("/d/n\nx")});
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
        urls.push_back(URL::fileURLWithPath("/" + std::string(200, 'x') + std::to_string(number)));
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
    EXPECT_THAT(
        shell.recentDocuments.documents(),
        ElementsAre(URL::fileURLWithPath("/a"), URL::fileURLWithPath("/b")));
}

TEST_F(QtDocumentControllerTest, opensWhatItsUserChooses) {
    chosen = {URL::fileURLWithPath("/b"), URL::fileURLWithPath("/a")};
    controller.actionForSelector("openDocument:")(nullptr);
    openAll({});
    EXPECT_THAT(controller.documents(), SizeIs(2));
    EXPECT_FALSE(controller.actionForSelector("openDocuments:"));
}

} // namespace
} // namespace tolvane::tests
