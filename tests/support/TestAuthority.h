/// Certificates for tests, made by the openssl program.
#pragma once

#include "tests/support/TemporaryFolder.h"

#include <string>

namespace tolvane::tests {

/// The paths of a certificate and its private key as PEM files.
struct Certificate {
    std::string certificate;
    std::string key;
};

/// A certificate authority that is trusted only where a test says so. Failures fail the test.
class TestAuthority {
public:
    TestAuthority();

    const Certificate& own() const { return own_; }

    /// A certificate for servers, with names in openssl's form: "IP:127.0.0.1,DNS:localhost".
    Certificate issueFor(const std::string& names);

private:
    TemporaryFolder folder_;
    Certificate own_;
    int issued_ = 0;
};

} // namespace tolvane::tests
