#pragma once

#include <bits/errno.h>

#if defined(__cplusplus)
extern "C" {
#endif

int* __error(void);

#if defined(__cplusplus)
}
#endif

#define errno (*__error())
