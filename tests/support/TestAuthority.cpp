#include "tests/support/TestAuthority.h"

#include "tests/support/Process.h"

#include <gtest/gtest.h>

#include <vector>

namespace tolvane::tests {

namespace {

void makeCertificate(
    const Certificate& certificate, const std::string& subject, const std::vector<std::string>& more) {
    std::vector<std::string> command{"openssl", "req", "-x509", "-nodes", "-days", "2", "-newkey", "ec"};
    command.insert(
        command.end(), {"-pkeyopt", "ec_paramgen_curve:prime256v1", "-subj", subject, "-out",
                        certificate.certificate, "-keyout", certificate.key});
    command.insert(command.end(), more.begin(), more.end());
    const ProcessOutcome outcome = run({.command = command});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
}

} // namespace

TestAuthority::TestAuthority() : own_{folder_.path("authority.pem"), folder_.path("authority.key")} {
    makeCertificate(own_, "/CN=Authority of a test", {"-addext", "keyUsage=critical,keyCertSign"});
}

Certificate TestAuthority::issueFor(const std::string& names) {
    const std::string name = "server" + std::to_string(++issued_);
    Certificate issued{folder_.path(name + ".pem"), folder_.path(name + ".key")};
    makeCertificate(
        issued, "/CN=Server of a test",
        {"-CA", own_.certificate, "-CAkey", own_.key, "-addext", "basicConstraints=critical,CA:FALSE",
         "-addext", "subjectAltName=" + names});
    return issued;
}

} // namespace tolvane::tests
