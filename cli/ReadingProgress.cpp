#include "cli/ReadingProgress.h"

#include "cli/TerminalText.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace tolvane::cli {

/// The reading of one file.
class ReadingProgress::Reading {
public:
    Reading(ReadingProgress& progress, std::string name) : progress_(progress), name_(std::move(name)) {}
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;
    ~Reading() {
        const std::scoped_lock lock(progress_.mutex_);
        end();
    }

    void show(std::uint64_t done, std::uint64_t size) {
        // What is read at once needs no line.
        constexpr std::uint64_t largeSize = std::uint64_t{64} << 20U;
        const std::uint64_t percent = done >= size ? whole : done / (size / whole + 1);
        if (size < largeSize || percent == std::exchange(last_, percent)) {
            return;
        }
        const std::scoped_lock lock(progress_.mutex_);
        if (percent == whole) {
            end();
        } else if (progress_.shown_ == nullptr || progress_.shown_ == this) {
            progress_.shown_ = this;
            progress_.hasLine_ = true;
            static_cast<void>(
                progress_.errors_.write("\rReading " + name_ + ": " + std::to_string(percent) + " %"));
        }
    }

private:
    static constexpr std::uint64_t whole = 100;

    void end() {
        if (progress_.shown_ == this) {
            progress_.clear();
            progress_.shown_ = nullptr;
        }
    }

    ReadingProgress& progress_;
    std::string name_;
    std::uint64_t last_ = whole; ///< Percent.
};

verification::Progress ReadingProgress::of(const std::string& name) {
    // A line that is wrapped could not be cleared.
    constexpr std::size_t longestName = 40;
    if (!isTerminal()) {
        return [](std::uint64_t, std::uint64_t) { return true; };
    }
    std::string shown = terminalLine(name);
    const auto reading =
        std::make_shared<Reading>(*this, shown.size() > longestName ? "the file" : std::move(shown));
    return [reading](std::uint64_t done, std::uint64_t size) {
        reading->show(done, size);
        return true;
    };
}

platform::Result<void> ReadingProgress::write(std::string_view bytes, platform::OutputStream& stream) {
    const std::scoped_lock lock(mutex_);
    clear();
    return stream.write(bytes);
}

void ReadingProgress::clear() {
    if (std::exchange(hasLine_, false)) {
        static_cast<void>(errors_.write("\r\x1B[K"));
    }
}

} // namespace tolvane::cli
