// Saving and copying after the item has vanished, with every call of the two failing in turn.
#include "tests/hostile/FailingDetailsWindow.h"
#include "tests/hostile/LostFacts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Command = void (details::ViewController::*)(platform::Sender);

constexpr const char* complaint = "No such file or directory";
constexpr const char* destination = "/data/report.text";

class VanishingWhileSaving : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(window.open());
        window.calls.restart();
    }

    /// Lets the calls with these numbers fail from here on.
    void fail(std::function<bool(std::size_t)> numbers) {
        window.calls.restart();
        window.calls.fails = std::move(numbers);
    }

    FailingDetailsWindow window;
};

TEST_F(VanishingWhileSaving, asksNothingAboutTheItem) {
    window.save(destination);
    EXPECT_THAT(window.calls.names(), ElementsAre("homeDirectory", "describeForLocale", "writeInPlace"));
    EXPECT_EQ(window.scripted.textFiles.written.at(destination), window.controller().saveString());
}

struct Row {
    std::size_t number;
    /// What stands at the end of the window's attributes afterwards.
    const char* message;

    friend std::ostream& operator<<(std::ostream& stream, const Row& row) { return stream << row.number; }
};

// The home folder and the words for a date are always answered; writing fails aloud.
class SavingWithAFailure : public VanishingWhileSaving, public testing::WithParamInterface<Row> {};

TEST_P(SavingWithAFailure, ofOneCallLeavesTheTextsAndSaysSo) {
    const auto before = window.texts();
    fail([](std::size_t call) { return call == GetParam().number; });
    window.save(destination);
    auto after = before;
    after["inodeText"] += GetParam().message;
    EXPECT_EQ(window.texts(), after);
    EXPECT_EQ(
        window.scripted.textFiles.written.contains(destination), std::string(GetParam().message).empty());
}

TEST_P(SavingWithAFailure, fromACallOnSaysSoEachTimeAndInTheNextReport) {
    const auto before = window.texts();
    fail([](std::size_t call) { return call >= GetParam().number; });
    window.save(destination);
    window.save(destination);
    // The first attempt writes in its third call and the second in its sixth, which both fail in every row.
    auto after = before;
    after["inodeText"] += std::string(complaint) + complaint;
    EXPECT_EQ(window.texts(), after);
    EXPECT_THAT(window.scripted.textFiles.written, IsEmpty());
    fail([](std::size_t) { return false; });
    window.save(destination);
    EXPECT_THAT(
        window.scripted.textFiles.written.at(destination),
        testing::HasSubstr("}\n" + std::string(complaint) + complaint + "\non the moment"));
}

INSTANTIATE_TEST_SUITE_P(
    AtCall, SavingWithAFailure, testing::Values(Row{1, ""}, Row{2, ""}, Row{3, complaint}));

// What the window shows when a pass has found next to nothing is what is saved, word for word.
TEST(SavingWhatIsLeft, quotesTheTextsOfAVanishedItem) {
    FailingDetailsWindow window;
    window.resources.keepsValues = true;
    window.calls.fails = [](std::size_t call) { return call > 1; };
    ASSERT_TRUE(window.open());
    window.calls.fails = [](std::size_t) { return false; };
    window.save(destination);
    EXPECT_EQ(
        window.scripted.textFiles.written.at(destination),
        "Details for file notes.txt\n"
        "Path: /data/notes.txt\n"
        "volfs path: \n"
        "FileReferenceURL: file:///.file/id=72340172838076673.72340172838076673\n"
        "Sizes:\n"
        "     URL Keys: data 0 metadata 0 total 0\n"
        "     File system: data 0 metadata 0 total 0\n"
        "Posix permissions (octal): \n"
        "Owner:  ID \n"
        "Group:  ID \n"
        "Created:  last modified \n"
        "Type:  reference count: \n"
        "\n"
        "Bookmark (Base-64):\n"
        "\n"
        "\n"
        "Bookmark path: (couldn't get bookmark)\n"
        "\n"
        "Extended attributes: \n"
        "on the moment 2001-01-01 00:00:00 +0000");
}

constexpr std::array<Command, 6> copyCommands{
    &details::ViewController::copyPath,     &details::ViewController::copyVolfs,
    &details::ViewController::copyFrefURL,  &details::ViewController::copyPerms,
    &details::ViewController::copyBookmark, &details::ViewController::copyXattrs};

using TextCommands = VanishingWhileSaving;

TEST_F(TextCommands, askNothingAboutTheItem) {
    for (const Command command : copyCommands) {
        window.calls.restart();
        (window.controller().*command)(nullptr);
        EXPECT_THAT(window.calls.names(), ElementsAre("clearContents", "writeObjects"));
    }
    window.calls.restart();
    window.controller().incFontSize(nullptr);
    window.controller().decFontSize(nullptr);
    EXPECT_THAT(window.calls.names(), IsEmpty());
}

TEST_F(TextCommands, areSilentWhereThePasteboardTakesNothing) {
    const auto before = window.texts();
    for (std::size_t number = 1; number <= 2; ++number) {
        for (const bool once : {true, false}) {
            for (const Command command : copyCommands) {
                fail([=](std::size_t call) { return once ? call == number : call >= number; });
                (window.controller().*command)(nullptr);
                EXPECT_EQ(window.calls.names().size(), 2U);
                EXPECT_EQ(window.texts(), before);
            }
        }
    }
}

// Only what was shown can be copied, and an empty field leaves the pasteboard as it is.
TEST(TextCommandsOnWhatIsLeft, copyTheTextsOfAVanishedItem) {
    FailingDetailsWindow window;
    window.resources.keepsValues = true;
    window.calls.fails = [](std::size_t call) { return call > 1; };
    ASSERT_TRUE(window.open());
    window.calls.fails = [](std::size_t) { return false; };
    const std::string reference = "file:///.file/id=72340172838076673.72340172838076673";
    const std::array<const char*, 6> expected{"/data/notes.txt", "/data/notes.txt", reference.c_str(),
                                              reference.c_str(), reference.c_str(), reference.c_str()};
    for (std::size_t i = 0; i < copyCommands.size(); ++i) {
        (window.controller().*copyCommands.at(i))(nullptr);
        EXPECT_THAT(window.scripted.pasteboard.texts(), ElementsAre(expected.at(i))) << i;
    }
}

} // namespace
} // namespace tolvane::tests
