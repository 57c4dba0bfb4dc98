#include "tests/support/SessionBus.h"

#include "platform/linux/files/FileDescriptor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <unistd.h>

namespace tolvane::tests {

namespace {

// Without the folders of the system's own services, so that none of those is started.
std::string configuration(const std::string& folder) {
    return R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=)"
           + folder + R"(</listen>
  <auth>EXTERNAL</auth>
  <servicedir>)"
           + folder + R"(/services</servicedir>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";
}

} // namespace

bool isInstalled(std::string_view program) {
    constexpr std::array folders{"/usr/local/sbin/", "/usr/local/bin/", "/usr/sbin/",
                                 "/usr/bin/",        "/sbin/",          "/bin/"};
    return std::ranges::any_of(folders, [program](const std::string& folder) {
        return access((folder + std::string(program)).c_str(), X_OK) == 0;
    });
}

SessionBus::SessionBus(const SessionBusSetup& setup) {
    const std::string file = folder_.file("bus.conf", configuration(folder_.path()));
    folder_.folder("services");
    for (const auto& [name, command] : setup.services) {
        folder_.file(
            "services/" + name + ".service", "[D-BUS Service]\nName=" + name + "\nExec=" + command + "\n");
    }
    // Services talk a lot, and a pipe that nobody empties would stop them.
    const auto nowhere = platform::FileDescriptor::owned(open("/dev/null", O_WRONLY | O_CLOEXEC));
    ProcessSetup process;
    process.command = {
        std::string(program), "--config-file=" + file, "--print-address", "--nofork", "--nopidfile"};
    process.environment = setup.environment;
    process.errorDescriptor = nowhere.number();
    daemon_ = std::make_unique<Process>(process);
    const bool started = daemon_->waitForOutput([this](const std::string& out) {
        address_ = out.substr(0, out.find('\n'));
        return out.contains('\n');
    });
    EXPECT_TRUE(started) << "The bus does not start";
}

} // namespace tolvane::tests
