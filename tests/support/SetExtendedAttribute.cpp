// The call has other arguments on other systems, whose tests have their own.
#include "tests/support/TemporaryFolder.h"

#include <sys/xattr.h>

namespace tolvane::tests {

bool setExtendedAttribute(const std::string& path, const std::string& name, std::string_view value) {
    return setxattr(path.c_str(), name.c_str(), value.data(), value.size(), 0) == 0;
}

} // namespace tolvane::tests
