#pragma once

#include "platform/bookmark/resolution/MountedVolumes.h"
#include "platform/values/JoinedThread.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {

inline std::string pathOfEntry(const std::string& folder, const std::string& name) {
    return (folder == "/" ? std::string() : folder) + "/" + name;
}

/// An entry that may be a folder or has the number, and the item there.
struct EntryLook {
    FolderEntry entry;
    std::string path;
    Result<MountedItem> item;
};

/// What there is in one folder; `count` of all entries that were read.
struct FolderLook {
    std::vector<EntryLook> entries;
    std::size_t count = 0;
    bool wasRead = false;
};

/// Reads folders in the order in which they are given, with the items in them. Once there have been several,
/// it reads ahead on more threads; what it returns is the same for any number of them.
class FolderReaders {
public:
    /// Entries with this file number are looked at. The volumes must outlive it.
    FolderReaders(const MountedVolumes& mounted, std::uint64_t fileNumber, unsigned mostThreads);
    FolderReaders(const FolderReaders&) = delete;
    FolderReaders& operator=(const FolderReaders&) = delete;

    /// Waits until no thread reads any more.
    ~FolderReaders();

    void add(std::string folder);

    /// Whether each added folder was returned.
    bool empty() const { return jobs_.empty(); }

    /// The next folder, with at most so many of its entries.
    FolderLook next(std::size_t most);

private:
    enum class State { waiting, reading, done };

    struct Job {
        std::string folder;
        State state = State::waiting;
        FolderLook look = {};
    };

    /// The first job that waits and is not too far ahead, or null.
    Job* nextWaiting();

    /// Reads a job's folder while others may use the lock.
    void read(Job& job, std::unique_lock<std::mutex>& lock);
    void readUntilTheEnd();
    void startThreads();
    FolderLook lookInto(const std::string& folder, std::size_t most) const;

    const MountedVolumes& mounted_;
    std::uint64_t fileNumber_;
    unsigned mostThreads_;
    std::size_t returned_ = 0;

    std::mutex mutex_; ///< Of everything below.
    std::condition_variable changed_;
    std::deque<Job>
        jobs_; ///< The next to be returned first. Others are added and removed without moving one.
    std::size_t most_ = 0;
    bool isEnding_ = false;
    std::vector<JoinedThread> threads_;
};

} // namespace tolvane::platform
