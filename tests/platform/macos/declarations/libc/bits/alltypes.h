// The types whose widths are different on macOS, each where musl's headers ask for it, and so more than once;
// musl's own file defines the others.
#if !defined(TOLVANE_MACOS_TYPES)
#define TOLVANE_MACOS_TYPES

#define __DEFINED_int64_t
#define __DEFINED_uint64_t
#define __DEFINED_u_int64_t
#define __DEFINED_intmax_t
#define __DEFINED_uintmax_t
#define __DEFINED_suseconds_t
#define __DEFINED_mode_t
#define __DEFINED_nlink_t
#define __DEFINED_off_t
#define __DEFINED_ino_t
#define __DEFINED_dev_t
#define __DEFINED_blksize_t
#define __DEFINED_blkcnt_t
#define __DEFINED_wint_t
#define __DEFINED_wctype_t
#define __DEFINED_clock_t
#define __DEFINED_mbstate_t
#define __DEFINED_sigset_t
#define __DEFINED_pthread_t
#define __DEFINED_pthread_once_t
#define __DEFINED_pthread_key_t
#define __DEFINED_pthread_attr_t
#define __DEFINED_pthread_mutex_t
#define __DEFINED_pthread_mutexattr_t
#define __DEFINED_pthread_cond_t
#define __DEFINED_pthread_condattr_t
#define __DEFINED_pthread_rwlock_t
#define __DEFINED_pthread_rwlockattr_t

typedef long long int64_t;
typedef unsigned long long uint64_t;
typedef unsigned long long u_int64_t;
typedef long intmax_t;
typedef unsigned long uintmax_t;
typedef unsigned int __uint32_t;
typedef int suseconds_t;
typedef unsigned short mode_t;
typedef unsigned short nlink_t;
typedef long long off_t;
typedef unsigned long long ino_t;
typedef int dev_t;
typedef int blksize_t;
typedef long long blkcnt_t;
typedef int wint_t;
typedef unsigned int wctype_t;
typedef unsigned long clock_t;
typedef unsigned int sigset_t;

typedef union {
    char bytes[128];
    long long alignment;
} mbstate_t;

typedef struct TolvanePthread* pthread_t;
typedef unsigned long pthread_key_t;

typedef struct {
    long sig;
    char opaque[8];
} pthread_once_t;
typedef struct {
    long sig;
    char opaque[56];
} pthread_attr_t;
typedef struct {
    long sig;
    char opaque[56];
} pthread_mutex_t;
typedef struct {
    long sig;
    char opaque[8];
} pthread_mutexattr_t;
typedef struct {
    long sig;
    char opaque[40];
} pthread_cond_t;
typedef struct {
    long sig;
    char opaque[8];
} pthread_condattr_t;
typedef struct {
    long sig;
    char opaque[192];
} pthread_rwlock_t;
typedef struct {
    long sig;
    char opaque[16];
} pthread_rwlockattr_t;
#endif

#include_next <bits/alltypes.h>
