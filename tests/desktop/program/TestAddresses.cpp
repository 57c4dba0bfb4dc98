// Takes the place of the product's addresses, so that a test can have the whole program ask a server of its
// own.
#include "app/ProductAddresses.h"

#include <QFile>
#include <QNetworkProxyFactory>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QString>
#include <QtGlobal>

#include <dlfcn.h>
#include <netdb.h>
#include <unistd.h>

/// Takes the place of the system's function, so that a test can have no name ever be found.
extern "C" __attribute__((visibility("default"))) int getaddrinfo(
    const char* name, const char* service, const addrinfo* hints, addrinfo** result) {
    while (qEnvironmentVariableIsSet("TOLVANE_TEST_NAMES_ARE_NEVER_FOUND")) {
        pause();
    }
    const auto original = reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return original(name, service, hints, result);
}

namespace tolvane::app {

ProductAddresses productAddresses() {
    QFile authority(qEnvironmentVariable("TOLVANE_TEST_AUTHORITY"));
    if (!authority.fileName().isEmpty() && authority.open(QIODevice::ReadOnly)) {
        QNetworkProxyFactory::setUseSystemConfiguration(false);
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates(QSslCertificate::fromDevice(&authority));
        QSslConfiguration::setDefaultConfiguration(configuration);
    }
    return {
        .support = "https://tolvane.example/support",
        .updatesElCapitan = "https://tolvane.example/updates/el-capitan",
        .updatesSierra = "https://tolvane.example/updates/sierra",
        .updateList = qEnvironmentVariable("TOLVANE_TEST_UPDATE_LIST").toStdString(),
        .downloadPrefix = "https://tolvane.example/downloads/"};
}

} // namespace tolvane::app
