#pragma once

#include_next <limits.h>

#undef PATH_MAX
#define PATH_MAX 1024
