#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

/// For conditions that must never occur: an unconnected outlet, a value of the wrong type in an attribute
/// dictionary, a size that overflows. They are defects of the program or the platform, never of the input,
/// and after one no result can be trusted.
namespace tolvane::platform {

/// Writes one line ("tolvane: fatal: " and the reason) to standard error and aborts the process.
/// Nothing is unwound; nothing is saved but what BeforeFatalError saves.
[[noreturn]] void fatalError(std::string_view reason);

/// Has a function run before a fatal error of this thread ends the process, for as long as the object lives:
/// what was finished before the defect is then not lost. Of several on one thread the last made counts. A
/// fatal error within the function ends the process at once.
class BeforeFatalError {
public:
    explicit BeforeFatalError(std::function<void()> function);
    BeforeFatalError(const BeforeFatalError&) = delete;
    BeforeFatalError& operator=(const BeforeFatalError&) = delete;
    ~BeforeFatalError();

private:
    std::function<void()> function_;
    const std::function<void()>* previous_;
};

/// a + b, or a fatal error naming `what`: a size never wraps or saturates.
std::int64_t checkedAdd(std::int64_t a, std::int64_t b, std::string_view what);

/// The same for a - b.
std::int64_t checkedSubtract(std::int64_t a, std::int64_t b, std::string_view what);

} // namespace tolvane::platform
