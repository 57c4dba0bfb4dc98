#include "attributes/Explanation.h"
#include "cli/Program.h"
#if defined(__APPLE__)
#include "platform/macos/MacPlatform.h"
#else
#include "platform/linux/LinuxPlatform.h"
#endif
#include "platform/posix/Accounts.h"
#include "platform/posix/CurrentDirectory.h"
#include "platform/posix/FileDescriptorStreams.h"
#include "platform/posix/PosixNewFiles.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// The terminal program over the system that it is built for.
namespace {

using namespace tolvane;

constexpr std::size_t oneForEachProcessor = 0;

int run(const std::vector<std::string>& arguments) {
    platform::makeWriteFailuresErrors();
    platform::FileDescriptorInput standardInput(platform::FileDescriptor::borrowed(0));
    platform::FileDescriptorOutput standardOutput(platform::FileDescriptor::borrowed(1));
    platform::FileDescriptorOutput standardError(platform::FileDescriptor::borrowed(2));

    const auto system = platform::systemPlatform(
        [&standardError](const std::string& sentence) { cli::complain(standardError, sentence); });
    platform::AccountNames accounts;
    const cli::ExitStatus status = cli::runProgram(
        arguments, {{system.resources, system.fileManager, system.extendedAttributes},
                    standardInput,
                    standardOutput,
                    standardError,
                    platform::currentDirectory,
                    [](const std::string& path) { return platform::openForReading(path); },
                    system.bookmarks,
                    system.session,
                    *system.fileContents,
                    oneForEachProcessor,
                    [&accounts](attributes::AccountKind kind, std::uint32_t number) {
                        return kind == attributes::AccountKind::user ? accounts.userName(number)
                                                                     : accounts.groupName(number);
                    },
                    system.statusFactSource(),
                    system.linkAttributeCalls(),
                    platform::PosixNewFiles::open,
                    system.composed});
    return static_cast<int>(status);
}

} // namespace

int main(int count, char** arguments) {
    return run({arguments + (count > 0 ? 1 : 0), arguments + count});
}
