#include "cli/Output.h"

namespace tolvane::cli {

namespace {

constexpr std::size_t largeWrite = 65'536;

} // namespace

bool Output::write(std::string_view text) {
    if (failure_) {
        return false;
    }
    gathered_ += text;
    return gathered_.size() >= largeWrite || isTerminal_ ? flush() : true;
}

bool Output::flush() {
    if (failure_) {
        return false;
    }
    if (gathered_.empty()) {
        return true;
    }
    if (auto written = stream_.write(gathered_); !written) {
        failure_ = written.error();
    }
    gathered_.clear();
    return !failure_;
}

} // namespace tolvane::cli
