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

class AttributesInWords : public testing::Test, protected DetailsScene<Ui::DocumentWindow> {
protected:
    void open() {
        services.open();
        scene.controller->setDocument(services.document());
        scene.controller->showWindow();
    }

    std::string words() const { return scene.child<QPlainTextEdit>("wordsText").toPlainText().toStdString(); }

    platform::TableWidget& table = scene.child<platform::TableWidget>("wordsTable");
};

TEST_F(AttributesInWords, takeThePlaceOfTheBytesOnCommand) {
    open();
    EXPECT_TRUE(scene.child<QWidget>("inodeText").isVisible());
    EXPECT_FALSE(table.isVisible());
    QTest::keyClick(&scene.child<QCheckBox>("attributesInWords"), Qt::Key_Space);
    EXPECT_FALSE(scene.child<QWidget>("inodeText").isVisible());
    EXPECT_TRUE(table.isVisible());
    EXPECT_TRUE(scene.child<QPlainTextEdit>("wordsText").isReadOnly());
    EXPECT_THAT(words(), testing::StartsWith("Unknown attribute (guess)\nuser.note\n"));
    QTest::keyClick(&table, Qt::Key_End);
    EXPECT_THAT(words(), testing::StartsWith("Permissions and status\n"));
}

TEST_F(AttributesInWords, areThereAtOnceWhereTheyWereShownLast) {
    services.defaults.setBool(true, "attributesInWords");
    open();
    EXPECT_TRUE(table.isVisible());
    EXPECT_TRUE(scene.child<QCheckBox>("attributesInWords").isChecked());
    EXPECT_NE(scene.widget->focusWidget(), &table);
}

TEST_F(AttributesInWords, offerToVerifyAndToStop) {
    services.fileManager.answer->set(
        "NSFileExtendedAttributes", platform::Dictionary{{"user.crc32", bytesOf("352441c2")}});
    services.fileTexts["/data/notes.txt"] = "abc";
    services.defaults.setBool(true, "attributesInWords");
    open();
    QCoreApplication::processEvents();
    auto& verify = scene.child<QAbstractButton>("verifyButton");
    auto& stop = scene.child<QAbstractButton>("stopButton");
    EXPECT_TRUE(verify.isEnabled());
    EXPECT_FALSE(stop.isEnabled());
    verify.click();
    QCoreApplication::processEvents();
    EXPECT_FALSE(verify.isEnabled());
    EXPECT_TRUE(stop.isEnabled());
    services.tasks.workAndDeliver();
    QCoreApplication::processEvents();
    EXPECT_TRUE(verify.isEnabled());
    EXPECT_THAT(words(), testing::HasSubstr("CRC-32 in user.crc32: fits the content\n"));
}

TEST_F(AttributesInWords, areThereForTenThousandAttributesOfACompanion) {
    const std::vector<CompanionAttribute> attributes(10'000, {"com.apple.quarantine", "0001;0;Browser;"});
    services.fileTexts["/data/._notes.txt"] =
        std::string(textOfBytes(companionFileWithAttributes(attributes)));
    services.defaults.setBool(true, "attributesInWords");
    open();
    EXPECT_GE(table.model()->rowCount(), 10'000);
    QTest::keyClick(&table, Qt::Key_End);
    EXPECT_THAT(words(), testing::HasSubstr("Agent: Browser"));
}

} // namespace
} // namespace tolvane::tests
