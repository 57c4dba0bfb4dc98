// The page of the details window that says what attributes mean, as the user sees it, over scripted services.
#include "interface/ui_DocumentWindow.h"
#include "platform/qt/windows/TableWidget.h"
#include "tests/interface/Scenes.h"
#include "tests/support/AppleDoubleFiles.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QPlainTextEdit>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

class AttributesInWords : public testing::Test {
protected:
    void open() {
        opened.services.open();
        opened.scene.controller->setDocument(opened.services.document());
        opened.scene.controller->showWindow();
    }

    template <typename T>
    T& child(const char* name) {
        return opened.scene.child<T>(name);
    }

    std::string words() { return child<QPlainTextEdit>("wordsText").toPlainText().toStdString(); }

    QApplication& qtApplication = application();
    DetailsScene<Ui::DocumentWindow> opened;
    platform::TableWidget& table = child<platform::TableWidget>("wordsTable");
};

TEST_F(AttributesInWords, takeThePlaceOfTheBytesOnCommand) {
    open();
    EXPECT_TRUE(child<QWidget>("inodeText").isVisible());
    EXPECT_FALSE(table.isVisible());
    QTest::keyClick(&child<QCheckBox>("attributesInWords"), Qt::Key_Space);
    EXPECT_FALSE(child<QWidget>("inodeText").isVisible());
    EXPECT_TRUE(table.isVisible());
    EXPECT_TRUE(child<QPlainTextEdit>("wordsText").isReadOnly());
    EXPECT_THAT(words(), testing::StartsWith("Unknown attribute (guess)\nuser.note\n"));
    QTest::keyClick(&table, Qt::Key_End);
    EXPECT_THAT(words(), testing::StartsWith("Permissions and status\n"));
}

TEST_F(AttributesInWords, areThereAtOnceWhereTheyWereShownLast) {
    opened.services.defaults.setBool(true, "attributesInWords");
    open();
    EXPECT_TRUE(table.isVisible());
    EXPECT_TRUE(child<QCheckBox>("attributesInWords").isChecked());
    EXPECT_NE(opened.scene.widget->focusWidget(), &table);
}

TEST_F(AttributesInWords, offerToVerifyAndToStop) {
    opened.services.fileManager.answer->set(
        "NSFileExtendedAttributes", platform::Dictionary{{"user.crc32", bytesOf("352441c2")}});
    opened.services.fileTexts["/data/notes.txt"] = "abc";
    opened.services.defaults.setBool(true, "attributesInWords");
    open();
    QCoreApplication::processEvents();
    auto& verify = child<QAbstractButton>("verifyButton");
    auto& stop = child<QAbstractButton>("stopButton");
    EXPECT_TRUE(verify.isEnabled());
    EXPECT_FALSE(stop.isEnabled());
    verify.click();
    QCoreApplication::processEvents();
    EXPECT_FALSE(verify.isEnabled());
    EXPECT_TRUE(stop.isEnabled());
    opened.services.tasks.workAndDeliver();
    QCoreApplication::processEvents();
    EXPECT_TRUE(verify.isEnabled());
    EXPECT_THAT(words(), testing::HasSubstr("CRC-32 in user.crc32: fits the content\n"));
}

TEST_F(AttributesInWords, areThereForTenThousandAttributesOfACompanion) {
    const std::vector<CompanionAttribute> attributes(10'000, {"com.apple.quarantine", "0001;0;Browser;"});
    opened.services.fileTexts["/data/._notes.txt"] =
        std::string(textOfBytes(companionFileWithAttributes(attributes)));
    opened.services.defaults.setBool(true, "attributesInWords");
    open();
    EXPECT_GE(table.model()->rowCount(), 10'000);
    QTest::keyClick(&table, Qt::Key_End);
    EXPECT_THAT(words(), testing::HasSubstr("Agent: Browser"));
}

} // namespace
} // namespace tolvane::tests
