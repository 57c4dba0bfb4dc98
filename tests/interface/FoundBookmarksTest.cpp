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

/// A text with this many bookmarks.
std::string linesOfBookmarks(int count) {
    const std::string line = base64Of(textOfBytes(corpusData("note.bookmark"))) + "\n\n";
    return QByteArray::fromStdString(line).repeated(count).toStdString();
}

class FoundBookmarksForm : public testing::Test, protected FoundBookmarksScene {
protected:
    void search(const std::string& contents) {
        services.files["/list.txt"] = contents;
        scene.controller->showWindow();
        scene.content->searchIn(platform::URL::fileURLWithPath("/list.txt"));
        services.tasks.workAndDeliver();
        QCoreApplication::processEvents();
    }

    platform::TableWidget& table = scene.child<platform::TableWidget>("findingsTable");
};

TEST_F(FoundBookmarksForm, listsFiltersAndOpens) {
    search(linesOfBookmarks(3));
    EXPECT_EQ(table.model()->rowCount(), 3);
    EXPECT_EQ(table.currentIndex().row(), 0);
    EXPECT_EQ(scene.widget->focusWidget(), &table);
    EXPECT_TRUE(scene.child<QLabel>("summaryTextbox").text().startsWith("3 findings in text"));
    EXPECT_TRUE(scene.child<QPushButton>("open").isEnabled());
    EXPECT_FALSE(scene.child<QPushButton>("stop").isEnabled());
    EXPECT_TRUE(scene.child<QLabel>("markMeaning").isHidden());
    QTest::keyClicks(&scene.child<QLineEdit>("filterTextbox"), "no such");
    EXPECT_EQ(table.model()->rowCount(), 0);
    QCoreApplication::processEvents();
    EXPECT_FALSE(scene.child<QPushButton>("open").isEnabled());
    scene.child<QLineEdit>("filterTextbox").clear();
    scene.content->filterTextbox->setStringValue("");
    EXPECT_EQ(table.model()->rowCount(), 3);
    scene.content->findingsTable->selectRow(1);
    table.setFocus();
    QTest::keyClick(&table, Qt::Key_Return);
    EXPECT_EQ(services.shownInResolver.size(), 1U);
}

TEST_F(FoundBookmarksForm, showsProgressWhileResolvingAndOffersToStop) {
    search(linesOfBookmarks(2));
    scene.child<QPushButton>("resolveAll").click();
    EXPECT_TRUE(scene.child<QPushButton>("stop").isEnabled());
    EXPECT_FALSE(scene.child<QPushButton>("resolveAll").isEnabled());
    EXPECT_FALSE(scene.child<QProgressBar>("resolvingProgress").isHidden());
    services.tasks.workAndDeliver();
    QCoreApplication::processEvents();
    EXPECT_FALSE(scene.child<QPushButton>("stop").isEnabled());
    EXPECT_TRUE(scene.child<QPushButton>("resolveAll").isEnabled());
    EXPECT_TRUE(scene.child<QProgressBar>("resolvingProgress").isHidden());
}

TEST_F(FoundBookmarksForm, holdsTenThousandFindings) {
    search(linesOfBookmarks(10'000));
    EXPECT_EQ(table.model()->rowCount(), 10'000);
    table.sortByColumn(0, Qt::DescendingOrder);
    EXPECT_EQ(table.model()->index(0, 0).data().toString(), "9999");
    QTest::keyClicks(&scene.child<QLineEdit>("filterTextbox"), "999");
    EXPECT_LT(table.model()->rowCount(), 10'000);
}

} // namespace
} // namespace tolvane::tests
