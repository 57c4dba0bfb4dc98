#include "platform/qt/panels/AlertBox.h"
#include "platform/qt/text/TextFieldWidget.h"
#include "tests/platform/qt/Children.h"
#include "tests/platform/qt/panels/DialogTest.h"

#include <QClipboard>
#include <QLabel>
#include <QMimeData>
#include <QScrollBar>

#include <string>

namespace tolvane::tests {
namespace {

using platform::Alert;
using platform::AlertBox;
using platform::AlertStyle;
using platform::TextFieldWidget;

class ExactAlert : public DialogTest {
protected:
    static Alert alertOf(const std::string& text) {
        return {
            .messageText = "An error occurred:",
            .informativeText = text,
            .style = AlertStyle::critical,
            .buttons = {"OK"},
            .isInformativeTextExact = true};
    }

    static TextFieldWidget& fieldOf(const AlertBox& box) {
        return *childOf<TextFieldWidget>(box, "exactText");
    }
};

TEST_F(ExactAlert, showsATextWholeAndUnchanged) {
    for (const std::string& text :
         {std::string("/a"), "/<b>\n\u202E&\xFF" + std::string(), "/" + std::string(5'000, 'x') + "/end"}) {
        AlertBox box(alertOf(text));
        box.show();
        EXPECT_EQ(box.text(), "An error occurred:");
        EXPECT_EQ(fieldOf(box).text(), text);
        EXPECT_TRUE(fieldOf(box).isVisible());
        for (const QLabel* const label : box.findChildren<QLabel*>()) {
            EXPECT_TRUE(label->isHidden() || label->text().isEmpty() || label->text() == box.text())
                << "it is not said twice: " << label->text().toStdString();
        }
    }
}

TEST_F(ExactAlert, letsItBeSelectedAndCopied) {
    const std::string text = "/a \u202E b";
    AlertBox box(alertOf(text));
    box.show();
    TextFieldWidget& field = fieldOf(box);
    EXPECT_TRUE(field.textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->mimeData()->data("text/plain").toStdString(), text);
    EXPECT_TRUE(box.isVisible());
}

TEST_F(ExactAlert, isAnsweredByReturnAtOnce) {
    AlertBox box(alertOf("/a"));
    box.show();
    box.activateWindow();
    ASSERT_TRUE(eventually([&] { return box.isActiveWindow(); }));
    EXPECT_FALSE(fieldOf(box).hasFocus());
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_FALSE(box.isVisible());
}

TEST_F(ExactAlert, scrollsWhatIsLong) {
    AlertBox brief(alertOf("/a"));
    brief.show();
    EXPECT_EQ(fieldOf(brief).verticalScrollBar()->maximum(), 0);
    AlertBox box(alertOf("/" + std::string(4'095, 'x')));
    box.show();
    EXPECT_GT(fieldOf(box).verticalScrollBar()->maximum(), 0);
    EXPECT_LE(box.width(), 800);
    EXPECT_LE(box.height(), 600);
    EXPECT_GE(box.height(), brief.height());
}

} // namespace
} // namespace tolvane::tests
