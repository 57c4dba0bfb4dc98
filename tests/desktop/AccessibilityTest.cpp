#include "tests/desktop/AccessibleWindows.h"
#include "tests/desktop/DesktopTest.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace tolvane::tests {

namespace {

class Accessibility : public DesktopTest {
protected:
    void SetUp() override {
        if (const std::string missing = missingAccessibilityProgram(); !missing.empty()) {
            GTEST_SKIP() << missing << " is not installed";
        }
        DesktopTest::SetUp();
    }

    DesktopSetup setup() const override { return accessibleDesktop(); }
};

// What each field is called for those who hear it, by its outlet.
const std::map<std::string, std::string>& fieldNames() {
    static const std::map<std::string, std::string> names{
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
    return names;
}

TEST_F(Accessibility, everyFieldIsReadWithItsNameAndText) {
    const std::string path = file("Übersicht 2.txt", "twelve bytes");
    static_cast<void>(setExtendedAttribute(path, "user.tolvane.test", "value"));
    const auto expected = report(path);
    Process& tolvane = startTolvane({path});
    const std::string window = desktop().waitForWindow(titleOf("Übersicht 2.txt"));

    std::vector<AccessibleObject> objects;
    EXPECT_TRUE(waitUntil([&] {
        objects = accessibleObjects(desktop());
        return !objects.empty();
    })) << "The window is not on the accessibility bus";
    EXPECT_EQ(expected.size(), fieldNames().size());
    for (const auto& [outlet, name] : fieldNames()) {
        const auto field = std::ranges::find_if(objects, [&name](const AccessibleObject& object) {
            return object.name == name && object.role == "text";
        });
        const bool isThere = field != objects.end();
        EXPECT_TRUE(isThere) << "No field is called " << name;
        if (isThere) {
            EXPECT_EQ(field->text, expected.at(outlet)) << name << ", " << field->role;
        }
    }
    for (const char* const button :
         {"Copy path", "Copy volume path", "Copy file reference URL", "Copy permissions", "Copy bookmark",
          "Copy extended attributes", "Smaller text", "Larger text"}) {
        EXPECT_TRUE(std::ranges::any_of(
            objects,
            [button](const AccessibleObject& object) {
                return object.name == button && object.role.contains("button");
            }))
            << "No button is called " << button;
    }
    quit(window, tolvane);
}

} // namespace

} // namespace tolvane::tests
