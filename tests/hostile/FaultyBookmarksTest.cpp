// Bookmarks made, read and resolved while system calls fail, and while their items are replaced between two
// calls.
#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/values/Base64.h"
#include "tests/hostile/SystemCallGate.h"
#include "tests/oracle/BookmarkOracle.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {
namespace {

namespace fs = std::filesystem;

using Command = std::vector<std::string>;

constexpr const char* memoryFolder = "/dev/shm"; // small, so that searching it for a lost item takes no time

/// Whether the output is one line with a bookmark of the item at this place, by its path and its number.
bool isBookmarkOf(const PlaceFacts& place, const std::string& out) {
    if (!out.ends_with('\n')) {
        return false;
    }
    const auto data = platform::base64DecodedData(out.substr(0, out.size() - 1));
    const auto structure = platform::readBookmark(data.value_or(platform::Data()));
    if (!structure) {
        return false;
    }
    const auto contents = platform::bookmarkContents(*structure);
    return contents.pathComponents == place.components && contents.fileIDs && !contents.fileIDs->empty()
           && contents.fileIDs->back() == static_cast<std::int64_t>(place.numbers.back());
}

/// Counts the calls of a run after the loading of the program, from the first one about the subject on.
class WorkCalls {
public:
    explicit WorkCalls(std::string subject) : subject_(std::move(subject)) {}

    /// The number of the call, from 1 on; 0 before the work.
    std::size_t next(const PendingCall& call) {
        hasBegun_ = hasBegun_ || call.path == "/proc/self/mountinfo" || call.path == subject_;
        return hasBegun_ ? ++count_ : 0;
    }

    std::size_t count() const { return count_; }

private:
    std::string subject_;
    bool hasBegun_ = false;
    std::size_t count_ = 0;
};

class FaultyBookmarks : public GateTest {
protected:
    void SetUp() override {
        GateTest::SetUp();
        if (!fs::is_directory(memoryFolder)) {
            GTEST_SKIP() << "there is no " << memoryFolder;
        }
        folder = std::make_unique<TemporaryFolder>(memoryFolder);
        folder->folder("folder");
        item = folder->file("folder/item", "words");
        folder->file("folder/other", "words");
        bookmark = printed({"bookmark", "make", item});
        ASSERT_TRUE(bookmark.starts_with("Ym9va")) << bookmark;
        aliasContents = printed({"bookmark", "make", "--alias", item});
        alias = folder->file("alias", aliasContents);
    }

    static Command resolving(const std::string& text) {
        return tolvane({"bookmark", "resolve", text}).command;
    }
    Command readingAlias() const { return tolvane({"bookmark", "read", alias}).command; }

    /// Runs the command once for each of its calls, which fails then, alone and with all after it. Every
    /// output has to be an allowed one, or the run ends with a complaint.
    static void expectAtEachFault(
        const Command& command,
        const std::string& subject,
        const std::function<bool(const std::string& out)>& isAllowed) {
        WorkCalls undisturbed(subject);
        const auto good = runThroughGate(command, [&](const PendingCall& call) {
            undisturbed.next(call);
            return 0;
        });
        ASSERT_EQ(good.status, 0) << good.err;
        ASSERT_TRUE(isAllowed(good.out)) << good.out;
        ASSERT_GT(undisturbed.count(), 3U);
        std::size_t complaints = 0;
        constexpr std::array faults{
            std::pair{ENOENT, true}, std::pair{EACCES, true}, std::pair{EIO, true}, std::pair{EIO, false}};
        for (const auto& [error, once] : faults) {
            for (std::size_t faulty = 1; faulty <= undisturbed.count(); ++faulty) {
                WorkCalls calls(subject);
                std::string named;
                const auto outcome = runThroughGate(command, [&](const PendingCall& call) {
                    const std::size_t number = calls.next(call);
                    const bool fails = once ? number == faulty : number >= faulty;
                    named = number == faulty ? call.name + " " + call.path : named;
                    return fails ? error : 0;
                });
                const bool isGood = outcome.status == 0 && outcome.err.empty() && isAllowed(outcome.out);
                complaints += isGood ? 0 : 1;
                EXPECT_TRUE(isGood || isComplaint(outcome))
                    << named << (once ? "" : " and all after it") << ": " << std::strerror(error)
                    << "\nsignal " << outcome.signal << "\n"
                    << outcome.out << outcome.err;
            }
        }
        EXPECT_GT(complaints, 0U) << "no fault had an effect";
    }

    /// Prepared for each run.
    struct Replacement {
        Command command;
        std::string subject;
        std::function<void()> replace;
        std::vector<std::string> allowed;
    };

    /// Replaces something before each call in turn. Every output has to be an allowed one, or the run ends
    /// with a complaint.
    static void expectAtEachReplacement(const std::function<Replacement()>& prepare) {
        std::size_t number = 0;
        for (bool isReplaced = true; isReplaced;) {
            ++number;
            isReplaced = false;
            const Replacement replacement = prepare();
            WorkCalls calls(replacement.subject);
            const auto outcome = runThroughGate(replacement.command, [&](const PendingCall& call) {
                if (calls.next(call) == number) {
                    isReplaced = true;
                    replacement.replace();
                }
                return 0;
            });
            EXPECT_TRUE(
                std::ranges::find(replacement.allowed, outcome.out) != replacement.allowed.end()
                || isComplaint(outcome))
                << "before call " << number << "\n"
                << outcome.out << outcome.err;
            EXPECT_EQ(outcome.signal, 0);
        }
        EXPECT_GT(number, 4U);
    }

    std::unique_ptr<TemporaryFolder> folder;
    std::string item;
    std::string bookmark;
    std::string aliasContents;
    std::string alias;
};

TEST_F(FaultyBookmarks, leadToTheItemOrAreComplainedOf) {
    const std::string lines = linesOfItem(item, item);
    expectAtEachFault(resolving(bookmark), item, [&](const std::string& out) { return out == lines; });
}

// The same where the item has to be searched for: no other item is taken for it.
TEST_F(FaultyBookmarks, leadToTheRenamedItemOrAreComplainedOf) {
    const std::string renamed = folder->path("folder/renamed");
    fs::rename(item, renamed);
    if (!keepsCreationDate(renamed)) {
        GTEST_SKIP() << memoryFolder << " keeps no creation dates";
    }
    const std::string lines = linesOfItem(renamed, renamed);
    expectAtEachFault(resolving(bookmark), item, [&](const std::string& out) { return out == lines; });
}

// What cannot be read because of a fault is missing, but the bookmark is of the item.
TEST_F(FaultyBookmarks, areMadeOrComplainedOf) {
    const PlaceFacts place = placesOf({item}).at(item);
    expectAtEachFault(tolvane({"bookmark", "make", item}).command, item, [&](const std::string& out) {
        return isBookmarkOf(place, out);
    });
}

TEST_F(FaultyBookmarks, areReadFromAliasFilesOrComplainedOf) {
    const std::string stored = printed({"bookmark", "read", alias});
    ASSERT_TRUE(stored.starts_with("Ym9va")) << stored;
    expectAtEachFault(readingAlias(), alias, [&](const std::string& out) { return out == stored; });
}

// The printed number belongs to the old item or the new one, and to none else.
TEST_F(FaultyBookmarks, leadToOneItemWhenAnotherTakesItsPlace) {
    for (const std::string kind : {"file", "folder", "fifo"}) {
        SCOPED_TRACE(kind);
        expectAtEachReplacement([&]() -> Replacement {
            fs::remove_all(item);
            fs::remove_all(folder->path("successor"));
            folder->file("folder/item", "words");
            const std::string successor = kind == "file"     ? folder->file("successor", "longer words")
                                          : kind == "folder" ? folder->folder("successor")
                                                             : folder->fifo("successor");
            return {
                .command = resolving(printed({"bookmark", "make", item})),
                .subject = item,
                .replace =
                    [=, this] {
                        fs::remove(item);
                        fs::rename(successor, item);
                    },
                .allowed = {linesOfItem(item, item), linesOfItem(item, successor)}};
        });
    }
}

// What takes the place of an alias file is neither waited for nor taken for a bookmark.
TEST_F(FaultyBookmarks, areNotWaitedForWhenAnAliasFileIsReplaced) {
    const std::string stored = printed({"bookmark", "read", alias});
    const auto withoutAlias = [&]() -> const TemporaryFolder& {
        fs::remove(alias);
        return *folder;
    };
    const std::vector<std::pair<const char*, std::function<void()>>> kinds{
        {"nothing", [&] { withoutAlias(); }},
        {"folder", [&] { withoutAlias().folder("alias"); }},
        {"fifo", [&] { withoutAlias().fifo("alias"); }},
        {"link", [&] { withoutAlias().symlink("alias", item); }},
        {"half", [&] { fs::resize_file(alias, aliasContents.size() / 2); }},
        {"empty", [&] { fs::resize_file(alias, 0); }}};
    for (const auto& [kind, replace] : kinds) {
        SCOPED_TRACE(kind);
        expectAtEachReplacement([&]() -> Replacement {
            fs::remove_all(alias);
            folder->file("alias", aliasContents);
            return {.command = readingAlias(), .subject = alias, .replace = replace, .allowed = {stored}};
        });
    }
}

} // namespace
} // namespace tolvane::tests
