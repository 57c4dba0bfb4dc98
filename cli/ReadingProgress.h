#pragma once

#include "platform/services/Streams.h"
#include "verification/VerifyChecksums.h"

#include <mutex>
#include <string>
#include <string_view>

namespace tolvane::cli {

/// Standard error with one line that says how much of a large file is read. The line is only on a terminal,
/// about one file at a time, and cleared before anything else is written. Any thread may call everything.
class ReadingProgress final : public platform::OutputStream {
public:
    /// `errors` outlives this object.
    explicit ReadingProgress(platform::OutputStream& errors) : errors_(errors) {}

    /// What is to be called while the file is read; its last copy clears the line. It never ends the reading,
    /// since the terminal's interrupt ends the program. Must not outlive this object.
    verification::Progress of(const std::string& name);

    platform::Result<void> write(std::string_view bytes) override { return write(bytes, errors_); }
    bool isTerminal() const override { return errors_.isTerminal(); }

    /// Writes to a stream that may be shown on the same terminal.
    platform::Result<void> write(std::string_view bytes, platform::OutputStream& stream);

private:
    class Reading;

    void clear();

    platform::OutputStream& errors_;
    std::mutex mutex_;
    const Reading* shown_ = nullptr; ///< The one that the line is about.
    bool hasLine_ = false;
};

/// A stream that may be shown on the same terminal as the progress. Both outlive it.
class OutputBesideProgress final : public platform::OutputStream {
public:
    OutputBesideProgress(platform::OutputStream& stream, ReadingProgress& progress)
        : stream_(stream)
        , progress_(progress) {}

    platform::Result<void> write(std::string_view bytes) override { return progress_.write(bytes, stream_); }
    bool isTerminal() const override { return stream_.isTerminal(); }

private:
    platform::OutputStream& stream_;
    ReadingProgress& progress_;
};

} // namespace tolvane::cli
