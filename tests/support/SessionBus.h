// A session bus of a test's own. Nobody is on it but the test and the services that the test gives it.
#pragma once

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {

/// Whether a program of this name is in one of the usual folders. A test that needs one which is not says so
/// and is skipped.
bool isInstalled(std::string_view program);

struct SessionBusSetup {
    /// The services that the bus starts when they are called: name on the bus, and the command line as a
    /// service file spells it.
    std::map<std::string, std::string> services = {};
    /// What those get for an environment, besides the bus's address.
    std::vector<std::string> environment = plainEnvironment();
};

/// The bus runs for as long as the object lives; whoever is still on it then loses the connection.
class SessionBus {
public:
    static constexpr std::string_view program = "dbus-daemon";

    /// Fails the test when the bus does not start.
    explicit SessionBus(const SessionBusSetup& setup = {});

    /// Where to connect to.
    const std::string& address() const { return address_; }

    /// Ends the bus early.
    void end() { daemon_.reset(); }

private:
    TemporaryFolder folder_;
    std::unique_ptr<Process> daemon_;
    std::string address_;
};

} // namespace tolvane::tests
