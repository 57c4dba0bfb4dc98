#include "decoder/OwnLimits.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <sys/resource.h>
#include <unistd.h>

namespace tolvane::decoder {

namespace {

constexpr rlim_t processorSeconds = 20;
constexpr rlim_t openFiles = 64;
constexpr unsigned clockSeconds = 60;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool reservesAddresses = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool reservesAddresses = true;
#else
constexpr bool reservesAddresses = false;
#endif
#else
constexpr bool reservesAddresses = false;
#endif

bool limit(int resource, rlim_t most) {
    rlimit now{};
    if (getrlimit(resource, &now) != 0) {
        return false;
    }
    // A lower limit stays.
    now.rlim_max = std::min(now.rlim_max, most);
    now.rlim_cur = std::min(now.rlim_cur, most);
    return setrlimit(resource, &now) == 0;
}

bool limitMemory() {
    // The address sanitizer reserves terabytes of address space.
    constexpr rlim_t bytes = rlim_t{1} << 30U;
    return reservesAddresses || limit(RLIMIT_AS, bytes);
}

} // namespace

bool limitOwnResources() {
    // Failing to write a cache is an error for the library that tried, not the end of the program.
    if (std::signal(SIGXFSZ, SIG_IGN) == SIG_ERR) {
        return false;
    }
    // The parent ends what takes too long; this is for a parent that has died.
    alarm(clockSeconds);
    return limitMemory() && limit(RLIMIT_CPU, processorSeconds) && limit(RLIMIT_NOFILE, openFiles)
           && limit(RLIMIT_FSIZE, 0) && limit(RLIMIT_CORE, 0);
}

void forgetTheSession() {
    for (const char* name :
         {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "XAUTHORITY", "DBUS_SESSION_BUS_ADDRESS",
          "DBUS_SYSTEM_BUS_ADDRESS", "SESSION_MANAGER", "XDG_RUNTIME_DIR", "QT_QPA_PLATFORMTHEME",
          "QT_QPA_GENERIC_PLUGINS", "QT_IM_MODULE", "QT_LOGGING_CONF", "QT_IMAGEIO_MAXALLOC"}) {
        unsetenv(name);
    }
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
}

} // namespace tolvane::decoder
