#include "tests/support/PseudoTerminal.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace tolvane::tests {

using platform::FileDescriptor;

PseudoTerminal::PseudoTerminal() {
    const int screen = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    std::array<char, 128> name{};
    if (screen < 0 || grantpt(screen) != 0 || unlockpt(screen) != 0
        || ptsname_r(screen, name.data(), name.size()) != 0) {
        ADD_FAILURE() << "pseudo-terminal: " << std::strerror(errno);
    }
    screenSide_ = FileDescriptor::owned(screen);
    programSide_ = FileDescriptor::owned(open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    termios settings{};
    if (tcgetattr(descriptor(), &settings) == 0) {
        cfmakeraw(&settings);
    }
    EXPECT_EQ(tcsetattr(descriptor(), TCSANOW, &settings), 0) << std::strerror(errno);
}

std::string PseudoTerminal::textUntilHangUp() {
    programSide_.reset();
    std::string text;
    std::array<char, 4'096> buffer{};
    while (true) {
        const auto length = read(screenSide_->number(), buffer.data(), buffer.size());
        if (length > 0) {
            text.append(buffer.data(), static_cast<std::size_t>(length));
        } else if (length == 0 || errno != EINTR) {
            return text; // Without any program left, reading fails with EIO.
        }
    }
}

} // namespace tolvane::tests
