// Extended attributes that come, go, grow and shrink between the calls that list, measure and read them.
#include "tests/hostile/LostFacts.h"
#include "tests/hostile/ReportSteps.h"
#include "tests/oracle/Expectation.h"
#include "tests/oracle/Oracle.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>
#include <sys/xattr.h>

namespace tolvane::tests {
namespace {

using Change = std::function<void(const std::string& item)>;
using Loss = std::function<Fields(Fields texts)>;

constexpr const char* bothLines = "    \"user.a\" = <3132>;\n    \"user.b\" = <333435>;\n";

Change setting(const std::string& name, const std::string& value) {
    return [=](const std::string& item) {
        EXPECT_TRUE(setExtendedAttribute(item, name, value)) << std::strerror(errno);
    };
}

Change removing(const std::vector<std::string>& names) {
    return [=](const std::string& item) {
        for (const auto& name : names) {
            EXPECT_EQ(removexattr(item.c_str(), name.c_str()), 0) << std::strerror(errno);
        }
    };
}

// The sum of the sizes, and the lines of the list.
Loss showing(int sum, std::string lines) {
    return [=](Fields texts) {
        texts["xattrSize"] = std::to_string(sum);
        texts["filemanTotalSize"] = std::to_string(5 + sum); // the file holds five bytes
        texts["inodeText"] = lines.empty() ? "" : "NSFileExtendedAttributes : {\n" + lines + "}\n";
        return texts;
    };
}

struct Case {
    const char* name;
    /// Before which call the change is made.
    Step before;
    Change change;
    Loss shows;

    friend std::ostream& operator<<(std::ostream& stream, const Case& one) { return stream << one.name; }
};

// Of the calls of a stage, 0 and 1 ask for the length of the list and read it, and 2 and 3 measure the
// values; in the dictionary 1 reads the list, and 2 and 3 the values.
std::vector<Case> cases() {
    constexpr Stage sum = Stage::attributes;
    constexpr Stage dictionary = Stage::dictionary;
    const std::string onlyA = "    \"user.a\" = <3132>;\n";
    const std::string onlyB = "    \"user.b\" = <333435>;\n";
    const std::string threeLines = bothLines + std::string("    \"user.c\" = <36>;\n");
    const std::string large(2'000, '\x11');
    std::string largeLine = "    \"user.a\" = <11111111";
    for (std::size_t i = 4; i < large.size(); i += 4) {
        largeLine += " 11111111";
    }
    largeLine += ">;\n";
    return {
        {"listGrowsBeforeItIsMeasured", {sum, 0}, setting("user.c", "6"), showing(6, threeLines)},
        {"listGrowsBeforeItIsRead", {sum, 1}, setting("user.c", "6"), withoutAttributeSizes},
        {"listShrinksBeforeItIsRead", {sum, 1}, removing({"user.b"}), showing(2, onlyA)},
        {"listIsEmptyBeforeItIsRead", {sum, 1}, removing({"user.a", "user.b"}), showing(0, "")},
        {"listGrowsAfterItWasRead", {sum, 2}, setting("user.c", "6"), showing(5, threeLines)},
        {"firstGoesBeforeItIsMeasured", {sum, 2}, removing({"user.a"}), withoutAttributeSizes},
        {"lastGoesBeforeItIsMeasured", {sum, 3}, removing({"user.b"}), withoutAttributeSizes},
        {"firstGoesAfterItWasMeasured", {sum, 3}, removing({"user.a"}), showing(5, onlyB)},
        {"valueGrowsBeforeItIsMeasured",
         {sum, 2},
         setting("user.a", large),
         showing(2'003, largeLine + onlyB)},
        {"valueGrowsAfterItWasMeasured", {sum, 3}, setting("user.a", large), showing(5, largeLine + onlyB)},
        {"valueIsEmptiedAfterItWasMeasured",
         {sum, 3},
         setting("user.a", ""),
         showing(5, "    \"user.a\" = <>;\n" + onlyB)},
        {"listGrowsBeforeTheDictionary", {dictionary, 1}, setting("user.c", "6"), showing(5, threeLines)},
        {"listIsEmptyBeforeTheDictionary", {dictionary, 1}, removing({"user.a", "user.b"}), showing(5, "")},
        {"listGrowsInTheDictionary", {dictionary, 2}, setting("user.c", "6"), showing(5, bothLines)},
        {"valueGrowsInTheDictionary",
         {dictionary, 2},
         setting("user.a", large),
         showing(5, largeLine + onlyB)},
        {"firstGoesInTheDictionary", {dictionary, 2}, removing({"user.a"}), showing(5, onlyB)},
        {"lastGoesInTheDictionary", {dictionary, 3}, removing({"user.b"}), showing(5, onlyA)},
        {"bothGoInTheDictionary", {dictionary, 2}, removing({"user.a", "user.b"}), showing(5, "")},
    };
}

class ChangingAttributes : public GatedReportOfAttributes {
protected:
    void SetUp() override {
        GatedReportOfAttributes::SetUp();
        undisturbed = expectedFields(item, lookAt({item}).at(item));
        undisturbed["typeTextbox"] += ": public.plain-text";
    }

    Fields undisturbed;
};

class ChangedAttributes : public ChangingAttributes, public testing::WithParamInterface<Case> {};

TEST_P(ChangedAttributes, areShownAsTheyWereWhenAskedFor) {
    ReportSteps progress(item);
    bool isChanged = false;
    const Fields seen = reportThrough([&](const PendingCall& call) {
        if (!isChanged && progress.next(call) == GetParam().before) {
            isChanged = true;
            GetParam().change(item);
        }
        return 0;
    });
    ASSERT_TRUE(isChanged);
    expectFields(seen, GetParam().shows(undisturbed));
}

INSTANTIATE_TEST_SUITE_P(
    When, ChangedAttributes, testing::ValuesIn(cases()), [](const testing::TestParamInfo<Case>& change) {
        return std::string(change.param.name);
    });

// Whoever tried until the list stands still would never end.
TEST_F(ChangingAttributes, thatGrowWithEveryCallEndTheMeasuring) {
    int count = 0;
    const Fields seen = reportThrough([&](const PendingCall& call) {
        if (call.path == item && call.name.ends_with("xattr")) {
            static_cast<void>(setExtendedAttribute(item, "user.more" + std::to_string(++count), "1"));
        }
        return 0;
    });
    EXPECT_EQ(count, 3) << "the list for the forks, its length, and the reading that found too little room";
    expectFields(seen, withoutAttributeSizes(undisturbed));
}

TEST_F(ChangingAttributes, thatGrowWhileTheDictionaryReadsThemAreReadOnce) {
    ReportSteps progress(item);
    int count = 0;
    const Fields seen = reportThrough([&](const PendingCall& call) {
        const auto step = progress.next(call);
        if (step && step->stage == Stage::dictionary && call.path == item && call.name.ends_with("xattr")) {
            static_cast<void>(setExtendedAttribute(item, "user.more" + std::to_string(++count), "1"));
        }
        return 0;
    });
    EXPECT_EQ(count, 4) << "the list, and the values of the three that it held then";
    expectFields(seen, showing(5, std::string(bothLines) + "    \"user.more1\" = <31>;\n")(undisturbed));
}

} // namespace
} // namespace tolvane::tests
