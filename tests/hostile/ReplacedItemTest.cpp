// An item that is removed or replaced between any two calls that the program makes about it. The report then
// describes two items: the order of the calls says which text describes which, and other programs report the
// facts of both.
#include "tests/hostile/LostFacts.h"
#include "tests/hostile/ReportSteps.h"
#include "tests/oracle/Expectation.h"
#include "tests/oracle/Oracle.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/Mounting.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <functional>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <utility>
#include <vector>
#include <sys/mount.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

using Make = std::function<std::string(const TemporaryFolder&)>;

struct Successor {
    const char* name;
    /// Makes what is to take the item's place, under another name. Null where nothing does.
    Make make;
    /// What listing the attributes and asking for one of the item's meets: 0 where there is a list.
    int errorOfList;
    int errorOfValue;
    const char* typeIdentifier;
    /// Whether the item stays and something is mounted over its folder.
    bool isMounted = false;

    friend std::ostream& operator<<(std::ostream& stream, const Successor& one) { return stream << one.name; }
};

const std::vector<Successor>& successors() {
    using At = const TemporaryFolder&;
    static const std::vector<Successor> all{
        {"nothing", nullptr, ENOENT, ENOENT, "N/A"},
        {"mountOverItsFolder", nullptr, ENOENT, ENOENT, "N/A", true},
        {"file", [](At at) { return at.file("new", "a longer text"); }, 0, ENODATA, "public.plain-text"},
        {"folder", [](At at) { return at.folder("new"); }, 0, ENODATA, "public.folder"},
        {"linkToFile", [](At at) { return at.symlink("new", at.file("target")); }, 0, ENODATA,
         "public.symlink"},
        {"linkToNothing", [](At at) { return at.symlink("new", "missing"); }, ENOENT, ENOENT,
         "public.symlink"},
        {"linkToItself", [](At at) { return at.symlink("new", "item.txt"); }, ELOOP, ELOOP, "public.symlink"},
        {"fifo", [](At at) { return at.fifo("new"); }, 0, ENODATA, "public.named-pipe"},
        {"socket", [](At at) { return at.socket("new"); }, 0, ENODATA, "public.socket"},
    };
    return all;
}

constexpr std::array sizeFields{"urlTotalSize", "urlDataSize", "urlXattrSize"};

/// The item and its successor.
struct Scene {
    explicit Scene(const Successor& heir)
        : successor(heir.make ? heir.make(folder) : "")
        , mounts(heir.isMounted) {
        folder.file("item.txt", "words");
        takesAttributes =
            setExtendedAttribute(item, "user.a", "12") && setExtendedAttribute(item, "user.b", "345");
    }

    void replace() const {
        if (mounts) {
            EXPECT_TRUE(mountMemory(folder.path())) << std::strerror(errno);
            return;
        }
        std::filesystem::remove(item);
        if (!successor.empty()) {
            std::filesystem::rename(successor, item);
        }
    }

    void clear() const {
        if (mounts) {
            umount(folder.path().c_str());
        }
    }

    /// What other programs report about what is there now, if anything is.
    Fields facts() const {
        const auto items = lookAt({item});
        if (items.empty()) {
            return {};
        }
        ItemFacts told = items.at(item);
        told.attributes = told.attributes.value_or(std::map<std::string, std::string>{});
        return expectedFields(item, told);
    }

    TemporaryFolder folder;
    std::string item = std::filesystem::canonical(folder.path()).string() + "/item.txt";
    std::string successor;
    bool mounts;
    bool takesAttributes = false;
};

class ReplacedItem : public GateTest, public testing::WithParamInterface<Successor> {
protected:
    static bool isGone() { return GetParam().make == nullptr; }

    static void take(Fields& texts, const Fields& others, std::span<const char* const> names) {
        for (const char* name : names) {
            texts[name] = others.at(name);
        }
    }

    static void addTotal(Fields& texts) {
        texts["filemanTotalSize"] =
            std::to_string(std::stoll(texts["filemanSize"]) + std::stoll(texts["xattrSize"]));
    }

    /// Whether the attributes of what is asked about can be summed up; the sum then is that of the item or
    /// of its successor, which has none.
    static bool hasSum(const Step& step) {
        if (step.stage > Stage::attributes) {
            return true;
        }
        const bool asksForValues = step.stage == Stage::attributes && step.index >= 2;
        return !asksForValues && GetParam().errorOfList == 0;
    }

    /// The item's two attributes as far as they are still there.
    static std::string attributesText(const Fields& before, const Step& step) {
        if (step.stage != Stage::dictionary || step.index > 3) {
            return step.stage > Stage::dictionary ? before.at("inodeText") : "";
        }
        // One that has no such attribute has lost it; whatever else is in the way hides them all.
        const bool keepsFirst = step.index == 3 && GetParam().errorOfValue == ENODATA;
        return keepsFirst ? "NSFileExtendedAttributes : {\n    \"user.a\" = <3132>;\n}\n" : "";
    }

    /// What the window shows of an item that was there before this step, and its successor from it on.
    static Fields expectedTexts(const Fields& before, const Fields& after, const Step& step) {
        Fields texts = before;
        const bool valuesAreNew = step.stage == Stage::identity;
        const bool dictionaryIsNew = step.stage < Stage::dictionary || step == Step{Stage::dictionary, 0};
        if (valuesAreNew) {
            take(texts, after, sizeFields);
        }
        if (!hasSum(step)) {
            return withoutAttributeSizes(std::move(texts));
        }
        if (step.stage <= Stage::attributes) {
            texts["xattrSize"] = "0";
        }
        if (dictionaryIsNew && isGone()) {
            return withoutDictionary(std::move(texts));
        }
        if (dictionaryIsNew) {
            take(texts, after, dictionaryFields);
            texts["filemanSize"] = after.at("filemanSize");
        }
        addTotal(texts);
        texts["inodeText"] = attributesText(before, step);
        texts["typeTextbox"] +=
            valuesAreNew ? std::string(": ") + GetParam().typeIdentifier : ": public.plain-text";
        return texts;
    }

    /// The file reference URL is that of the item that was opened, and so no bookmark is made of any other.
    /// One that was made leads to whatever is at the path.
    static void expectBookmark(const Fields& seen, const Fields& before, const Step& step) {
        const bool isMade = step.stage >= Stage::resolution;
        const bool isFound = step.stage > Stage::resolution || (isMade && !isGone());
        EXPECT_EQ(seen.at("frURLTextbox"), before.at("frURLTextbox"));
        EXPECT_EQ(!seen.at("bookmarkTextbox").empty(), isMade);
        EXPECT_EQ(
            seen.at("bookmarkPathTextbox"), isFound ? seen.at("pathTextbox") : std::string(noBookmarkText));
    }

    /// Replaces the item before each of the calls that name it, in a run of its own.
    static void replaceBeforeEachCall() {
        std::size_t replaced = 0;
        while (replaceBeforeCall(replaced)) {
            ++replaced;
        }
        EXPECT_GT(replaced, 12U) << "the calls that name an item with two attributes";
    }

    /// False when there is no call of that number.
    static bool replaceBeforeCall(std::size_t number) {
        const Scene scene(GetParam());
        const Fields before = scene.facts();
        ReportSteps progress(scene.item);
        std::size_t seen = 0;
        std::optional<Step> at;
        const auto outcome =
            runThroughGate(tolvane({"report", scene.item}).command, [&](const PendingCall& call) {
                const auto step = progress.next(call);
                if (step && call.path == scene.item && !at && seen++ == number) {
                    at = *step;
                    scene.replace();
                }
                return 0;
            });
        if (at) {
            SCOPED_TRACE(
                "replaced before call " + std::to_string(at->index) + " of stage "
                + std::to_string(static_cast<int>(at->stage)));
            expectMixture(outcome, scene.item, before, scene.facts(), *at);
        }
        scene.clear();
        return at.has_value();
    }

    static void expectMixture(
        const ProcessOutcome& outcome,
        const std::string& item,
        const Fields& before,
        const Fields& after,
        const Step& step) {
        const bool isFirst = step.stage == Stage::identity;
        if (isFirst && isGone()) {
            expectComplaint(outcome, item + ": No such file or directory");
            return;
        }
        ASSERT_EQ(outcome.status, 0) << "signal " << outcome.signal << "\n" << outcome.err;
        EXPECT_EQ(outcome.err, "");
        const Fields seen = reportIn(outcome.out, item);
        Fields expected = expectedTexts(before, after, step);
        if (isFirst) {
            // The successor alone was ever seen, and so all is as if it had been there from the start.
            expected["frURLTextbox"] = after.at("frURLTextbox");
            EXPECT_EQ(seen.at("bookmarkPathTextbox"), item);
        } else {
            expectBookmark(seen, before, step);
        }
        expectFields(seen, expected);
    }
};

TEST_P(ReplacedItem, showsEachTextOfTheItemThatWasThereWhenItWasAsked) {
    if (!Scene(GetParam()).takesAttributes) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    if (!GetParam().isMounted) {
        replaceBeforeEachCall();
        return;
    }
    expectWithMounts([] {
        replaceBeforeEachCall();
        return true;
    });
}

INSTANTIATE_TEST_SUITE_P(
    By,
    ReplacedItem,
    testing::ValuesIn(successors()),
    [](const testing::TestParamInfo<Successor>& successor) { return std::string(successor.param.name); });

} // namespace
} // namespace tolvane::tests
