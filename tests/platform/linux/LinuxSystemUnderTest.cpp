#include "platform/linux/LinuxPlatform.h"
#include "tests/contracts/SystemUnderTest.h"

#include <cerrno>
#include <memory>

namespace tolvane::tests::contracts {

SystemUnderTest systemUnderTest() {
    const auto complain = [](const std::string& sentence) { ADD_FAILURE() << sentence; };
    return servicesOf(
        std::make_shared<const platform::LinuxPlatform>(platform::declaredTypes(complain)), ENODATA);
}

} // namespace tolvane::tests::contracts
