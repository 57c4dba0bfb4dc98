#include "app/desktop/Launch.h"
#if defined(__APPLE__)
#include "app/desktop/macos/MacDesktop.h"
#else
#include "app/desktop/linux/LinuxDesktop.h"
#endif

int main(int count, char** arguments) {
    return tolvane::app::launch(count, arguments, tolvane::app::desktopSystem);
}
