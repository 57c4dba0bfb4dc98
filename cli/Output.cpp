#include "cli/Output.h"

#include "cli/TerminalText.h"

#include <cerrno>

namespace tolvane::cli {

constexpr std::size_t largeWrite = 65'536;

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

bool complain(platform::OutputStream& errors, std::string_view message) {
    const bool escapes = errors.isTerminal() || message.contains('\n');
    const std::string shown = escapes ? terminalLine(message) : std::string(message);
    const platform::Result<void> written = errors.write("tolvane-cli: " + shown + "\n");
    return written || written.error().code == EBADF;
}

ExitStatus finished(Output& output, platform::OutputStream& errors, ExitStatus status) {
    output.flush();
    if (output.failure()) {
        complain(errors, "standard output: " + output.failure()->localizedDescription());
        return ExitStatus::failure;
    }
    return status;
}

} // namespace tolvane::cli
