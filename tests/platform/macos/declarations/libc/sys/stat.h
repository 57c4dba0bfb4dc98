#pragma once

#include_next <sys/stat.h>

// Names that macOS has no field for.
#undef st_atime
#undef st_mtime
#undef st_ctime
