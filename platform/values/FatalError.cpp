#include "platform/values/FatalError.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

namespace tolvane::platform {

namespace {

// The one to call on this thread, or null. A fatal error is reported from anywhere, through no object.
const std::function<void()>*& functionOfThread() {
    thread_local const std::function<void()>* function = nullptr;
    return function;
}

} // namespace

BeforeFatalError::BeforeFatalError(std::function<void()> function)
    : function_(std::move(function))
    , previous_(std::exchange(functionOfThread(), &function_)) {}

BeforeFatalError::~BeforeFatalError() {
    functionOfThread() = previous_;
}

void fatalError(std::string_view reason) {
    if (const auto* const function = std::exchange(functionOfThread(), nullptr)) {
        (*function)();
    }
    const std::string line = "tolvane: fatal: " + std::string(reason) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::abort();
}

std::int64_t checkedAdd(std::int64_t a, std::int64_t b, std::string_view what) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        fatalError(std::string(what) + " overflows a signed 64-bit integer");
    }
    return sum;
}

std::int64_t checkedSubtract(std::int64_t a, std::int64_t b, std::string_view what) {
    std::int64_t difference = 0;
    if (__builtin_sub_overflow(a, b, &difference)) {
        fatalError(std::string(what) + " overflows a signed 64-bit integer");
    }
    return difference;
}

} // namespace tolvane::platform
