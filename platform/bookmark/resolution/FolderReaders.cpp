#include "platform/bookmark/resolution/FolderReaders.h"

#include <algorithm>
#include <system_error>

namespace tolvane::platform {

namespace {

/// Starting threads takes longer than reading a few folders, and most items are found in one of the first.
constexpr std::size_t foldersBeforeThreads = 8;

/// What is read ahead in vain when the item is found.
constexpr std::size_t mostReadAhead = 16;

} // namespace

FolderReaders::FolderReaders(const MountedVolumes& mounted, std::uint64_t fileNumber, unsigned mostThreads)
    : mounted_(mounted)
    , fileNumber_(fileNumber)
    , mostThreads_(mostThreads) {}

FolderReaders::~FolderReaders() {
    const std::scoped_lock lock(mutex_);
    isEnding_ = true;
    changed_.notify_all();
}

void FolderReaders::add(std::string folder) {
    const std::scoped_lock lock(mutex_);
    jobs_.push_back({std::move(folder)});
    changed_.notify_one();
}

FolderLook FolderReaders::next(std::size_t most) {
    if (++returned_ == foldersBeforeThreads) {
        startThreads();
    }
    std::unique_lock lock(mutex_);
    most_ = most;
    Job& first = jobs_.front();
    while (first.state != State::done) {
        if (Job* const job = nextWaiting()) {
            read(*job, lock);
        } else {
            changed_.wait(lock);
        }
    }
    FolderLook look = std::move(first.look);
    jobs_.pop_front();
    // It may have been read when more were allowed.
    look.count = std::min(look.count, most);
    std::erase_if(look.entries, [&](const EntryLook& each) { return each.entry.position >= most; });
    return look;
}

FolderReaders::Job* FolderReaders::nextWaiting() {
    const auto end = jobs_.begin() + static_cast<std::ptrdiff_t>(std::min(jobs_.size(), mostReadAhead));
    const auto job = std::ranges::find(jobs_.begin(), end, State::waiting, &Job::state);
    return job == end ? nullptr : &*job;
}

void FolderReaders::read(Job& job, std::unique_lock<std::mutex>& lock) {
    job.state = State::reading;
    const std::size_t most = most_;
    lock.unlock();
    FolderLook look = lookInto(job.folder, most);
    lock.lock();
    job.look = std::move(look);
    job.state = State::done;
    changed_.notify_all();
}

void FolderReaders::readUntilTheEnd() {
    std::unique_lock lock(mutex_);
    while (!isEnding_) {
        if (Job* const job = nextWaiting()) {
            read(*job, lock);
        } else {
            changed_.wait(lock);
        }
    }
}

void FolderReaders::startThreads() {
    // The caller's thread reads, too.
    for (unsigned count = 1; count < mostThreads_; ++count) {
        try {
            threads_.emplace_back([this] { readUntilTheEnd(); });
        } catch (const std::system_error&) {
            return; // The system has no more threads for us; fewer do as well.
        }
    }
}

FolderLook FolderReaders::lookInto(const std::string& folder, std::size_t most) const {
    auto read = mounted_.entriesOf(folder, fileNumber_, most);
    if (!read) {
        return {};
    }
    FolderLook look{{}, read->count, true};
    look.entries.reserve(read->entries.size());
    for (FolderEntry& entry : read->entries) {
        std::string path = pathOfEntry(folder, entry.name);
        auto item = mounted_.itemAt(path);
        look.entries.push_back({std::move(entry), std::move(path), std::move(item)});
    }
    return look;
}

} // namespace tolvane::platform
