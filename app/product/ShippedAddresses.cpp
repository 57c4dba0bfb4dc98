#include "app/ProductAddresses.h"

namespace tolvane::app {

ProductAddresses productAddresses() {
    return {
        .support = TOLVANE_SUPPORT_URL,
        .updatesElCapitan = TOLVANE_UPDATES_EL_CAPITAN_URL,
        .updatesSierra = TOLVANE_UPDATES_SIERRA_URL,
        .updateList = TOLVANE_UPDATE_LIST_URL,
        .downloadPrefix = TOLVANE_DOWNLOAD_PREFIX};
}

} // namespace tolvane::app
