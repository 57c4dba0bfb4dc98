// The window of found bookmarks as the user sees it, over scripted services.
#include "platform/qt/windows/TableWidget.h"
#include "tests/interface/Scenes.h"
#include "tests/support/AppleDoubleFiles.h"
#include "tests/support/BookmarkCorpus.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tolvane::tests {
namespace {

/// As many bookmarks as a text file holds lines.
std::string linesOfBookmarks(int count) {
    const std::string line = base64Of(textOfBytes(corpusData("note.bookmark"))) + "\n\n";
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += line;
    }
    return text;
}

class FoundBookmarksForm : public testing::Test {
protected:
    void search(const std::string& contents) {
        opened.services.files["/list.txt"] = contents;
        opened.scene.controller->showWindow();
        opened.scene.content->searchIn(platform::URL::fileURLWithPath("/list.txt"));
        opened.services.tasks.workAndDeliver();
        QCoreApplication::processEvents();
    }

    template <typename T>
    T& child(const char* name) {
        return opened.scene.child<T>(name);
    }

    QApplication& qtApplication = application();
    FoundBookmarksScene opened;
    platform::TableWidget& table = child<platform::TableWidget>("findingsTable");
};

TEST_F(FoundBookmarksForm, listsFiltersAndOpens) {
    search(linesOfBookmarks(3));
    EXPECT_EQ(table.model()->rowCount(), 3);
    EXPECT_EQ(table.currentIndex().row(), 0);
    EXPECT_EQ(opened.scene.widget->focusWidget(), &table);
    EXPECT_TRUE(child<QLabel>("summaryTextbox").text().startsWith("3 findings in text"));
    EXPECT_TRUE(child<QPushButton>("open").isEnabled());
    EXPECT_FALSE(child<QPushButton>("stop").isEnabled());
    EXPECT_TRUE(child<QLabel>("markMeaning").isHidden());
    QTest::keyClicks(&child<QLineEdit>("filterTextbox"), "no such");
    EXPECT_EQ(table.model()->rowCount(), 0);
    QCoreApplication::processEvents();
    EXPECT_FALSE(child<QPushButton>("open").isEnabled());
    child<QLineEdit>("filterTextbox").clear();
    opened.scene.content->filterTextbox->setStringValue("");
    EXPECT_EQ(table.model()->rowCount(), 3);
    opened.scene.content->findingsTable->selectRow(1);
    table.setFocus();
    QTest::keyClick(&table, Qt::Key_Return);
    EXPECT_EQ(opened.services.shownInResolver.size(), 1U);
}

TEST_F(FoundBookmarksForm, showsProgressWhileResolvingAndOffersToStop) {
    search(linesOfBookmarks(2));
    child<QPushButton>("resolveAll").click();
    EXPECT_TRUE(child<QPushButton>("stop").isEnabled());
    EXPECT_FALSE(child<QPushButton>("resolveAll").isEnabled());
    EXPECT_FALSE(child<QProgressBar>("resolvingProgress").isHidden());
    opened.services.tasks.workAndDeliver();
    QCoreApplication::processEvents();
    EXPECT_FALSE(child<QPushButton>("stop").isEnabled());
    EXPECT_TRUE(child<QPushButton>("resolveAll").isEnabled());
    EXPECT_TRUE(child<QProgressBar>("resolvingProgress").isHidden());
}

TEST_F(FoundBookmarksForm, holdsTenThousandFindings) {
    search(linesOfBookmarks(10'000));
    EXPECT_EQ(table.model()->rowCount(), 10'000);
    table.sortByColumn(0, Qt::DescendingOrder);
    EXPECT_EQ(table.model()->index(0, 0).data().toString(), "9999");
    QTest::keyClicks(&child<QLineEdit>("filterTextbox"), "999");
    EXPECT_LT(table.model()->rowCount(), 10'000);
}

} // namespace
} // namespace tolvane::tests
