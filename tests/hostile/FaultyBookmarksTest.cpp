// Bookmarks made, read and resolved while system calls fail one after the other, and while what they are
// about is replaced between two of them.
#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/values/Base64.h"
#include "tests/hostile/SystemCallGate.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

namespace fs = std::filesystem;

using Command = std::vector<std::string>;

constexpr const char* memoryFolder = "/dev/shm"; // small, so that searching it for a lost item takes no time

std::string volumeLine(const std::string& path) {
    struct stat status{};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path << ": " << std::strerror(errno);
    return "volfs path : /.vol/" + std::to_string(status.st_dev) + "/" + std::to_string(status.st_ino) + "\n";
}

/// Whether the file system keeps when its items were made, without which none is known again by its number.
bool keepsCreationDate(const std::string& path) {
    struct statx status{};
    EXPECT_EQ(statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BTIME, &status), 0)
        << path << ": " << std::strerror(errno);
    return (status.stx_mask & STATX_BTIME) != 0;
}

/// What the bookmark in a line of the program's output says; nothing where the line holds none.
std::optional<platform::BookmarkContents> contentsInLine(const std::string& out) {
    if (!out.ends_with('\n')) {
        return std::nullopt;
    }
    const auto data = platform::base64DecodedData(out.substr(0, out.size() - 1));
    if (!data) {
        return std::nullopt;
    }
    const auto structure = platform::readBookmark(*data);
    return structure ? std::optional(platform::bookmarkContents(*structure)) : std::nullopt;
}

/// Whether that is of the item at this path, which has no links on its way: by its path and its number.
bool isOfItem(const platform::BookmarkContents& contents, const std::string& path) {
    std::vector<std::string> components;
    for (const fs::path& component : fs::path(path).relative_path()) {
        components.push_back(component.string());
    }
    struct stat status{};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path << ": " << std::strerror(errno);
    return contents.pathComponents == components && contents.fileIDs && !contents.fileIDs->empty()
           && contents.fileIDs->back() == static_cast<std::int64_t>(status.st_ino);
}

/// Whether the program gave up as it has to: one line of complaint, and nothing else.
bool isComplaint(const ProcessOutcome& outcome) {
    return outcome.status == 1 && outcome.out.empty() && outcome.err.starts_with("tolvane-cli: ")
           && outcome.err.ends_with("\n") && linesOf(outcome.err).size() == 1;
}

/// Counts the calls of a run from the first on that is made for its work: what comes before is the loading
/// of the program.
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

class FaultyBookmarks : public testing::Test {
protected:
    void SetUp() override {
        if (const auto obstacle = obstacleToGates()) {
            GTEST_SKIP() << *obstacle;
        }
        if (!fs::is_directory(memoryFolder)) {
            GTEST_SKIP() << "there is no " << memoryFolder;
        }
        folder = std::make_unique<TemporaryFolder>(memoryFolder);
        home = fs::canonical(folder->path()).string();
        static_cast<void>(folder->folder("folder"));
        item = folder->file("folder/item", "words");
        static_cast<void>(folder->file("folder/other", "words"));
        bookmark = run(tolvane({"bookmark", "make", item})).out;
        ASSERT_TRUE(bookmark.starts_with("Ym9va")) << bookmark;
        alias = folder->file("alias", run(tolvane({"bookmark", "make", "--alias", item})).out);
    }

    Command resolving() const { return tolvane({"bookmark", "resolve", bookmark}).command; }

    /// Runs the command once for each of its calls, which fails then, alone and with all after it. Every
    /// outcome has to be one that is allowed, or a complaint.
    void expectAtEachFault(
        const Command& command,
        const std::string& subject,
        const std::function<bool(const std::string& out)>& isAllowed) const {
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
        EXPECT_GT(complaints, 0U) << "no fault was felt";
    }

    std::unique_ptr<TemporaryFolder> folder;
    std::string home;
    std::string item;
    std::string bookmark;
    std::string alias;
};

TEST_F(FaultyBookmarks, leadToTheItemOrAreComplainedOf) {
    const std::string lines = item + "\n" + volumeLine(item);
    expectAtEachFault(resolving(), item, [&](const std::string& out) { return out == lines; });
}

// The same where the item has to be searched for: whatever is not seen, no other item is taken for it.
TEST_F(FaultyBookmarks, leadToTheRenamedItemOrAreComplainedOf) {
    const std::string renamed = home + "/folder/renamed";
    ASSERT_EQ(std::rename(item.c_str(), renamed.c_str()), 0);
    const std::string lines = renamed + "\n" + volumeLine(renamed);
    if (!keepsCreationDate(renamed)) {
        GTEST_SKIP() << memoryFolder << " does not keep when its items were made";
    }
    const auto outcome = run(tolvane({"bookmark", "resolve", bookmark}));
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    expectAtEachFault(resolving(), item, [&](const std::string& out) { return out == lines; });
}

TEST_F(FaultyBookmarks, areMadeOrComplainedOf) {
    expectAtEachFault(tolvane({"bookmark", "make", item}).command, item, [&](const std::string& out) {
        // What a fault keeps from being known is left out, and the item is told all the same.
        const auto contents = contentsInLine(out);
        return contents && isOfItem(*contents, item);
    });
}

TEST_F(FaultyBookmarks, areReadFromAliasFilesOrComplainedOf) {
    const std::string stored = run(tolvane({"bookmark", "read", alias})).out;
    ASSERT_TRUE(stored.starts_with("Ym9va")) << stored;
    expectAtEachFault(tolvane({"bookmark", "read", alias}).command, alias, [&](const std::string& out) {
        return out == stored;
    });
}

// Before each call of the resolution the item gives way to another, whose numbers are then told with its
// path, or those of the item, and no mixture.
TEST_F(FaultyBookmarks, tellOneItemWhenAnotherTakesItsPlace) {
    for (const std::string& kind : {std::string("file"), std::string("folder"), std::string("fifo")}) {
        std::size_t replacements = 0;
        bool isReplaced = true;
        for (std::size_t number = 1; isReplaced; ++number) {
            fs::remove_all(item);
            static_cast<void>(folder->file("folder/item", "words"));
            const std::string text = run(tolvane({"bookmark", "make", item})).out;
            const std::string successor = kind == "file"     ? folder->file("successor", "longer words")
                                          : kind == "folder" ? folder->folder("successor")
                                                             : folder->fifo("successor");
            const std::string before = item + "\n" + volumeLine(item);
            const std::string after = item + "\n" + volumeLine(successor);
            WorkCalls calls(item);
            isReplaced = false;
            const auto outcome =
                runThroughGate(tolvane({"bookmark", "resolve", text}).command, [&](const PendingCall& call) {
                    if (calls.next(call) == number) {
                        isReplaced = true;
                        EXPECT_EQ(unlink(item.c_str()), 0) << std::strerror(errno);
                        EXPECT_EQ(std::rename(successor.c_str(), item.c_str()), 0) << std::strerror(errno);
                    }
                    return 0;
                });
            EXPECT_TRUE(outcome.out == before || outcome.out == after || isComplaint(outcome))
                << kind << " before call " << number << "\n"
                << outcome.out << outcome.err;
            EXPECT_EQ(outcome.signal, 0);
            fs::remove_all(successor);
            replacements += isReplaced ? 1 : 0;
        }
        EXPECT_GT(replacements, 3U) << kind;
    }
}

// The same for a file that is being read: what takes its place is neither waited for nor taken for a
// bookmark.
TEST_F(FaultyBookmarks, areNotWaitedForWhenAnAliasFileIsReplaced) {
    const std::string stored = run(tolvane({"bookmark", "read", alias})).out;
    const std::string contents = contentsOfFile(alias);
    for (const std::string& kind :
         {std::string("nothing"), std::string("folder"), std::string("fifo"), std::string("link"),
          std::string("half"), std::string("empty")}) {
        std::size_t replacements = 0;
        bool isReplaced = true;
        for (std::size_t number = 1; isReplaced; ++number) {
            fs::remove_all(alias);
            std::ofstream(alias, std::ios::binary) << contents;
            WorkCalls calls(alias);
            isReplaced = false;
            const auto outcome =
                runThroughGate(tolvane({"bookmark", "read", alias}).command, [&](const PendingCall& call) {
                    if (calls.next(call) != number) {
                        return 0;
                    }
                    isReplaced = true;
                    if (kind == "half" || kind == "empty") {
                        fs::resize_file(alias, kind == "half" ? contents.size() / 2 : 0);
                        return 0;
                    }
                    EXPECT_EQ(unlink(alias.c_str()), 0) << std::strerror(errno);
                    if (kind == "folder") {
                        static_cast<void>(folder->folder("alias"));
                    } else if (kind == "fifo") {
                        static_cast<void>(folder->fifo("alias"));
                    } else if (kind == "link") {
                        static_cast<void>(folder->symlink("alias", item));
                    }
                    return 0;
                });
            EXPECT_TRUE(outcome.out == stored || isComplaint(outcome))
                << kind << " before call " << number << "\n"
                << outcome.out << outcome.err;
            EXPECT_EQ(outcome.signal, 0);
            replacements += isReplaced ? 1 : 0;
        }
        EXPECT_GT(replacements, 3U) << kind;
    }
}

} // namespace
} // namespace tolvane::tests
