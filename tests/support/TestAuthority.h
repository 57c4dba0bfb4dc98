// Certificates of a test's own, made anew by the openssl program.
#pragma once

#include "tests/support/TemporaryFolder.h"

#include <string>

namespace tolvane::tests {

/// A certificate and its private key as paths of PEM files.
struct Certificate {
    std::string certificate;
    std::string key;
};

/// An authority that nobody trusts unless told to. Whatever cannot be made fails the test.
class TestAuthority {
public:
    TestAuthority();

    const Certificate& own() const { return own_; }

    /// A certificate for servers. The names are as openssl writes them: "IP:127.0.0.1,DNS:localhost".
    Certificate issueFor(const std::string& names);

private:
    TemporaryFolder folder_;
    Certificate own_;
    int issued_ = 0;
};

} // namespace tolvane::tests
