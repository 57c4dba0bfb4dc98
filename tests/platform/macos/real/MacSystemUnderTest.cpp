// The services of the Mac that the tests run on.
#include "platform/macos/MacPlatform.h"
#include "tests/contracts/SystemUnderTest.h"
#include "tests/support/TemporaryFolder.h"

#include <cerrno>
#include <memory>
#include <sys/xattr.h>

namespace tolvane::tests {

bool setExtendedAttribute(const std::string& path, const std::string& name, std::string_view value) {
    return setxattr(path.c_str(), name.c_str(), value.data(), value.size(), 0, 0) == 0;
}

namespace contracts {

SystemUnderTest systemUnderTest() {
    return servicesOf(std::make_shared<const platform::MacPlatform>(), ENOATTR);
}

} // namespace contracts
} // namespace tolvane::tests
