/// A session bus for one test, with only the test and the services it starts.
#pragma once

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {

struct SessionBusSetup {
    /// The services that the bus starts on demand: bus name, and command line as in a service file.
    std::map<std::string, std::string> services = {};
    /// Their environment, besides the bus's address.
    std::vector<std::string> environment = plainEnvironment();
};

/// The bus runs for the object's life; remaining clients then lose the connection.
class SessionBus {
public:
    static constexpr std::string_view program = "dbus-daemon";

    /// Fails the test if the bus does not start.
    explicit SessionBus(const SessionBusSetup& setup = {});

    /// The bus's address.
    const std::string& address() const { return address_; }

    /// Stops the bus early.
    void end() { daemon_.reset(); }

private:
    TemporaryFolder folder_;
    std::unique_ptr<Process> daemon_;
    std::string address_;
};

} // namespace tolvane::tests
