#include "app/ProductAddresses.h"

namespace tolvane::app {

ProductAddresses productAddresses() {
    return {.updateList = TOLVANE_UPDATE_LIST_URL, .downloadPrefix = TOLVANE_DOWNLOAD_PREFIX};
}

} // namespace tolvane::app
