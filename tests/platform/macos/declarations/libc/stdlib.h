#pragma once

#include_next <stdlib.h>

#undef MB_CUR_MAX
#define MB_CUR_MAX 4
