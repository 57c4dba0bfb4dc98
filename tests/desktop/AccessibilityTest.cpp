#include "tests/desktop/AccessibleWindows.h"
#include "tests/desktop/DesktopTest.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using Accessibility = AccessibleDesktopTest;

// The name of each field for screen readers, by its outlet.
const std::map<std::string, std::string> fieldNames{
    {"pathTextbox", "Path"},
    {"volfsPathTextbox", "Volume path"},
    {"frURLTextbox", "File reference URL"},
    {"urlDataSize", "URL keys, data, bytes"},
    {"urlXattrSize", "URL keys, metadata, bytes"},
    {"urlTotalSize", "URL keys, total, bytes"},
    {"filemanSize", "File system, data, bytes"},
    {"xattrSize", "File system, metadata, bytes"},
    {"filemanTotalSize", "File system, total, bytes"},
    {"ownerNameTextbox", "Owner"},
    {"ownerIDTextbox", "Owner ID"},
    {"groupNameTextbox", "Group"},
    {"groupIDTextbox", "Group ID"},
    {"permsTextbox", "POSIX permissions, octal"},
    {"typeTextbox", "Type"},
    {"createdTextbox", "Created"},
    {"modifiedTextbox", "Modified"},
    {"refCountTextbox", "Reference count"},
    {"bookmarkTextbox", "Bookmark in base-64"},
    {"bookmarkPathTextbox", "Path that the bookmark leads to"},
    {"inodeText", "Extended attributes"}};

TEST_F(Accessibility, everyFieldIsReadWithItsNameAndText) {
    const std::string path = file("Übersicht 2.txt", "twelve bytes");
    static_cast<void>(setExtendedAttribute(path, "user.tolvane.test", "value"));
    const auto expected = report(path);
    Process& tolvane = startTolvane({path});
    const std::string window = desktop().waitForWindow(titleOf("Übersicht 2.txt"));

    std::vector<AccessibleObject> objects;
    EXPECT_TRUE(waitUntil([&] {
        objects = accessibleObjects();
        return !objects.empty();
    })) << "The window is not on the accessibility bus";
    EXPECT_EQ(expected.size(), fieldNames.size());
    for (const auto& [outlet, name] : fieldNames) {
        const auto field = std::ranges::find_if(objects, [&name](const AccessibleObject& object) {
            return object.name == name && object.role == "text";
        });
        if (field == objects.end()) {
            ADD_FAILURE() << "No field is called " << name;
        } else {
            EXPECT_EQ(field->text, expected.at(outlet)) << name;
        }
    }
    for (const std::string button :
         {"Copy path", "Copy volume path", "Copy file reference URL", "Copy permissions", "Copy bookmark",
          "Copy extended attributes", "Smaller text", "Larger text"}) {
        EXPECT_TRUE(hasObject(objects, "button", button)) << "No button is called " << button;
    }
    quit(window, tolvane);
}

TEST_F(Accessibility, attributesAreReadInWords) {
    const std::string path = file("words.txt");
    if (!setExtendedAttribute(path, "user.xdg.origin.url", "https://example.org/")) {
        GTEST_SKIP() << "There are no extended attributes here";
    }
    Process& tolvane = startTolvane({path});
    const std::string window = desktop().waitForWindow(titleOf("words.txt"));
    desktop().press(window, {"alt+i"});
    EXPECT_TRUE(waitForName("user.xdg.origin.url"));
    const auto objects = accessibleObjects();
    EXPECT_TRUE(hasObject(objects, "", "Attributes"));
    EXPECT_TRUE(hasObject(objects, "text", "The attribute in words", "https://example.org/"));
    EXPECT_TRUE(hasObject(objects, "check", "Extended attributes in words"));
    EXPECT_TRUE(hasObject(objects, "check", "Show the bytes of the attribute"));
    EXPECT_TRUE(hasObject(objects, "button", "Verify checksums"));
    EXPECT_TRUE(hasObject(objects, "button", "Stop verifying"));
    quit(window, tolvane);

    Process& next = startTolvane({path});
    const std::string nextWindow = desktop().waitForWindow(titleOf("words.txt"));
    EXPECT_TRUE(waitForName("user.xdg.origin.url")) << "The page is not remembered";
    quit(nextWindow, next);
}

} // namespace
} // namespace tolvane::tests
