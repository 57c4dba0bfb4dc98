#include "cli/ReadingProgress.h"

#include "cli/TerminalText.h"

#include <cstddef>
#include <cstdint>

namespace tolvane::cli {

verification::Progress readingProgress(const std::string& name, platform::OutputStream& errors) {
    // What is read at once needs no line.
    constexpr std::uint64_t largeSize = std::uint64_t{64} << 20U;
    constexpr std::uint64_t whole = 100;
    // A line that is wrapped could not be written over.
    constexpr std::size_t longestName = 40;
    if (!errors.isTerminal()) {
        return [](std::uint64_t, std::uint64_t) { return true; };
    }
    std::string shown = terminalLine(name);
    shown = shown.size() > longestName ? "the file" : shown;
    return [shown, &errors, last = whole](std::uint64_t done, std::uint64_t size) mutable {
        const std::uint64_t percent = done >= size ? whole : done / (size / whole + 1);
        if (size >= largeSize && percent != last) {
            last = percent;
            static_cast<void>(errors.write(
                percent == whole ? "\r\x1B[K"
                                 : "\rReading " + shown + ": " + std::to_string(percent) + " %"));
        }
        return true;
    };
}

} // namespace tolvane::cli
