// An item that vanishes between any two questions of the logic, while it is opened and shown.
#include "tests/hostile/FailingDetailsWindow.h"
#include "tests/hostile/LostFacts.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <functional>
#include <string>

namespace tolvane::tests {
namespace {

constexpr const char* complaint = "No such file or directory";
constexpr const char* lastWords = "^tolvane: fatal: the inspected file has no file reference URL";

/// What comes of a failing call.
enum class End { window, noDocument, fatalStop };

struct Row {
    const char* call;
    End end;
    /// What the failure of this call alone takes away from the window's texts.
    std::function<Fields(Fields)> loses;
};

Fields losesNothing(Fields fields) {
    return fields;
}

// Every call that opening a file with two attributes makes, in its order.
const std::array<Row, 12>& rows() {
    static const std::array<Row, 12> table{{
        {"resourceValues NSURLFileResourceIdentifierKey", End::noDocument, losesNothing},
        {"resourceValues NSURLFileSizeKey NSURLTotalFileSizeKey", End::window, withoutResourceSizes},
        {"listxattr size", End::window, withoutAttributeSizes},
        {"listxattr", End::window, withoutAttributeSizes},
        {"getxattr user.note", End::window, withoutAttributeSizes},
        {"getxattr user.x", End::window, withoutAttributeSizes},
        {"attributesOfItemAtPath", End::window, withoutDictionary},
        {"resourceValues NSURLTypeIdentifierKey", End::window, withoutType},
        {"resourceValues NSURLFileResourceIdentifierKey", End::fatalStop, losesNothing},
        {"bookmarkData", End::window, withoutBookmark},
        {"URLByResolvingBookmarkData", End::window, withoutResolution},
        {"now", End::window, losesNothing}, // the clock has no failures
    }};
    return table;
}

class VanishingItemDeathTest : public testing::TestWithParam<std::size_t> {
protected:
    // The number of the call that fails, counted from 1.
    static std::size_t number() { return GetParam(); }
    static const Row& row() { return rows().at(number() - 1); }

    /// The same failure, and all that the later calls would have brought. What an earlier failure kept from
    /// being asked is not there to be lost.
    static Fields textsOfVanished() {
        Fields fields = FailingDetailsWindow::undisturbedTexts();
        for (std::size_t i = number(); i <= rows().size(); ++i) {
            fields = rows().at(i - 1).loses(std::move(fields));
        }
        return fields;
    }

    /// Opens the document and expects the end that is told, and the texts where there is a window.
    void expect(End end, const Fields& texts) {
        switch (end) {
        case End::noDocument: {
            const auto opened = window.open();
            ASSERT_FALSE(opened);
            EXPECT_EQ(opened.error().localizedDescription(), complaint);
            EXPECT_EQ(window.calls.names().size(), number()) << "nothing more is asked";
            break;
        }
        case End::fatalStop:
            EXPECT_DEATH(static_cast<void>(window.open()), lastWords);
            break;
        case End::window:
            ASSERT_TRUE(window.open());
            EXPECT_EQ(window.texts(), texts);
        }
    }

    FailingDetailsWindow window;
};

TEST_P(VanishingItemDeathTest, isMissedByTheOneCallThatFails) {
    window.calls.fails = [](std::size_t call) { return call == number(); };
    expect(row().end, row().loses(FailingDetailsWindow::undisturbedTexts()));
}

// Where nothing at all is answered any more, not even what the URL keeps of its item, there is no file
// reference URL: a stop, whatever failed before.
TEST_P(VanishingItemDeathTest, stopsThePassWhenNothingIsAnsweredAnyMore) {
    window.calls.fails = [](std::size_t call) { return call >= number(); };
    const std::size_t reference = 9;
    const End end = number() == 1 ? End::noDocument : number() <= reference ? End::fatalStop : End::window;
    expect(end, textsOfVanished());
}

// Every real platform answers the identity that the URL keeps, so that an item that is gone for good costs
// fields and never the window.
TEST_P(VanishingItemDeathTest, leavesItsIdentityInItsURL) {
    window.resources.keepsValues = true;
    window.calls.fails = [](std::size_t call) { return call >= number(); };
    expect(number() == 1 ? End::noDocument : End::window, textsOfVanished());
}

INSTANTIATE_TEST_SUITE_P(AtCall, VanishingItemDeathTest, testing::Range<std::size_t>(1, 13));

// The texts of the first pass stay where a later pass finds nothing, but for those that say so.
TEST(VanishingItem, keepsTheTextsOfAnEarlierPass) {
    FailingDetailsWindow window;
    window.resources.keepsValues = true;
    ASSERT_TRUE(window.open());
    window.calls.fails = [](std::size_t) { return true; };
    window.showAgain();
    Fields texts = withoutResolution(withoutType(FailingDetailsWindow::undisturbedTexts()));
    texts["inodeText"] += texts["inodeText"]; // of the document's record, which is made once
    EXPECT_EQ(window.texts(), texts);
}

TEST(VanishingItem, isAskedAboutByTheCallsOfTheTable) {
    FailingDetailsWindow window;
    ASSERT_TRUE(window.open());
    std::vector<std::string> calls;
    for (const Row& row : rows()) {
        calls.emplace_back(row.call);
    }
    EXPECT_EQ(window.calls.names(), calls);
    EXPECT_EQ(window.texts(), FailingDetailsWindow::undisturbedTexts());
}

} // namespace
} // namespace tolvane::tests
