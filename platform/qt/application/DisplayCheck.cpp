#include "platform/qt/application/DisplayCheck.h"

#include <QtGlobal>

#include <cstdio>
#include <cstdlib>

namespace tolvane::platform {

namespace {

/// Qt explains at length what it tried; only that it gave up matters.
void endWithoutDisplay(QtMsgType type, const QMessageLogContext& /*context*/, const QString& /*message*/) {
    if (type != QtFatalMsg) {
        return;
    }
    static_cast<void>(std::fputs(
        "tolvane: there is no display to show windows on; 'tolvane-cli report FILE' shows the same facts in "
        "a "
        "terminal\n",
        stderr));
    std::_Exit(EXIT_FAILURE);
}

} // namespace

DisplayCheck::DisplayCheck() {
    qInstallMessageHandler(&endWithoutDisplay);
}

DisplayCheck::~DisplayCheck() {
    qInstallMessageHandler(nullptr);
}

} // namespace tolvane::platform
