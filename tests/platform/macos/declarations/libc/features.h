#pragma once

// Unlike Linux, macOS hides no function behind a feature macro.
#define _BSD_SOURCE 1
#define _XOPEN_SOURCE 700

#include_next <features.h>
