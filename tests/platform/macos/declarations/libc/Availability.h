// The oldest system that is built for, as the compiler was told. Declared for the checks on Linux.
#pragma once

#define __MAC_10_6 1060
#define __MAC_OS_X_VERSION_MIN_REQUIRED __ENVIRONMENT_MAC_OS_X_VERSION_MIN_REQUIRED__
#define __MAC_OS_X_VERSION_MAX_ALLOWED __MAC_OS_X_VERSION_MIN_REQUIRED
