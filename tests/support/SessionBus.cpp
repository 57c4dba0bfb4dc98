#include "tests/support/SessionBus.h"

#include <gtest/gtest.h>

#include <fcntl.h>

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

SessionBus::SessionBus(const SessionBusSetup& setup) {
    const std::string file = folder_.file("bus.conf", configuration(folder_.path()));
    folder_.folder("services");
    for (const auto& [name, command] : setup.services) {
        folder_.file(
            "services/" + name + ".service", "[D-BUS Service]\nName=" + name + "\nExec=" + command + "\n");
    }
    // A full pipe would stop the services.
    const auto nowhere = openedFile("/dev/null", O_WRONLY);
    daemon_ = std::make_unique<Process>(ProcessSetup{
        .command =
            {std::string(program), "--config-file=" + file, "--print-address", "--nofork", "--nopidfile"},
        .environment = setup.environment,
        .errorDescriptor = nowhere.number()});
    EXPECT_TRUE(daemon_->waitForOutput([this](const std::string& out) {
        address_ = out.substr(0, out.find('\n'));
        return out.contains('\n');
    })) << "The bus does not start";
}

} // namespace tolvane::tests
