#include "app/desktop/Launch.h"
#include "app/desktop/linux/LinuxDesktop.h"

int main(int count, char** arguments) {
    return tolvane::app::launch(count, arguments, tolvane::app::desktopSystem);
}
