#include "cli/Complaint.h"

#include "cli/Output.h"
#include "cli/TerminalText.h"

#include <cerrno>
#include <string>

namespace tolvane::cli {

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
