#pragma once

#include_next <fcntl.h>

// musl's header has its own numbers for these.
#undef AT_FDCWD
#undef AT_SYMLINK_NOFOLLOW
#define AT_FDCWD (-2)
#define AT_SYMLINK_NOFOLLOW 0x20
