#pragma once

#include_next <stdio.h>

#if defined(__cplusplus)
extern "C" {
#endif

extern FILE* __stdinp;
extern FILE* __stdoutp;
extern FILE* __stderrp;

#if defined(__cplusplus)
}
#endif

#undef stdin
#undef stdout
#undef stderr
#define stdin __stdinp
#define stdout __stdoutp
#define stderr __stderrp
