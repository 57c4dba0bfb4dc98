#include "platform/qt/application/QtWorkspace.h"

#include "tests/platform/qt/QtTest.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QMimeData>
#include <QTextBrowser>
#include <QUrl>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::QtWorkspace;
using platform::URL;
using testing::ElementsAre;

/// Stands for the program that opens URLs of a scheme. Qt calls it by the name of one of its slots.
class Browser final : public QTextBrowser {
public:
    explicit Browser(QString scheme) : scheme_(std::move(scheme)) {
        QDesktopServices::setUrlHandler(scheme_, this, "setSource");
    }
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;
    ~Browser() override { QDesktopServices::unsetUrlHandler(scheme_); }

    std::vector<std::string> opened;

protected:
    void doSetSource(const QUrl& url, QTextDocument::ResourceType /*type*/) override {
        opened.push_back(url.toEncoded().toStdString());
    }

private:
    QString scheme_;
};

class QtWorkspaceTest : public testing::Test {
protected:
    QtWorkspaceTest() { application(); }

    QtWorkspace workspace;
};

URL url(const std::string& text) {
    return URL::fromText(text).value();
}

TEST_F(QtWorkspaceTest, hasTheAddressOpenedAsItIsWritten) {
    Browser browser("https");
    EXPECT_TRUE(workspace.openURL(url("https://tolvane.example/support?a=%20b&c=%C3%BC#d")));
    EXPECT_FALSE(workspace.openURL(url("https://a b:c/"))) << "no address";
    EXPECT_THAT(browser.opened, ElementsAre("https://tolvane.example/support?a=%20b&c=%C3%BC#d"));
    Browser fileManager("file");
    EXPECT_TRUE(workspace.openURL(URL::fileURLWithPath("/a b/\xFF%")));
    EXPECT_THAT(fileManager.opened, ElementsAre("file:///a%20b/%FF%25"));
}

TEST_F(QtWorkspaceTest, reportsThatNothingOpensSuchAddresses) {
    EXPECT_FALSE(workspace.openURL(url("tolvane-no-such-scheme:x")));
}

class QtPasteboardTest : public testing::Test {
protected:
    QtPasteboardTest() { application(); }

    static std::string held() { return QApplication::clipboard()->text().toStdString(); }

    bool write(const std::string& text) { return pasteboard.writeObjects(std::array{text}); }

    platform::QtPasteboard pasteboard;
};

TEST_F(QtPasteboardTest, holdsTextExactlyAsGivenAndPlainTextOnly) {
    const std::string text = "<b>a</b>" + std::string("\r\nb\rc\u00A0d\0e\u2028f\tg\uFEFF\n", 20);
    EXPECT_TRUE(write(text));
    EXPECT_EQ(held(), text);
    EXPECT_EQ(QApplication::clipboard()->mimeData()->formats(), QStringList{"text/plain"});
}

TEST_F(QtPasteboardTest, joinsSeveralTexts) {
    EXPECT_TRUE(pasteboard.writeObjects(std::array<std::string, 3>{"a", "", "b"}));
    EXPECT_EQ(held(), "a\n\nb");
    EXPECT_TRUE(write("c"));
    EXPECT_EQ(held(), "a\n\nb\nc");
}

TEST_F(QtPasteboardTest, beginsAnewAfterClearingAndTakesLongAndEmptyTexts) {
    for (const std::string& text : {std::string("a"), std::string(3'000'000, 'x'), std::string()}) {
        EXPECT_TRUE(write(text));
        EXPECT_EQ(held(), text);
        pasteboard.clearContents();
        EXPECT_EQ(held(), "");
        EXPECT_TRUE(pasteboard.writeObjects({}));
    }
}

} // namespace
} // namespace tolvane::tests
