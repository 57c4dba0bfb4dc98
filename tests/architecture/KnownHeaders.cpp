#include "tests/architecture/KnownHeaders.h"

#include <algorithm>
#include <array>

namespace tolvane::architecture {
namespace {

using namespace std::string_view_literals;

// Written out rather than guessed from the shape of a name: a third party's header may well have no ending.
constexpr std::array standardHeaders{
    "algorithm"sv,
    "any"sv,
    "array"sv,
    "atomic"sv,
    "barrier"sv,
    "bit"sv,
    "bitset"sv,
    "cassert"sv,
    "cctype"sv,
    "cerrno"sv,
    "cfenv"sv,
    "cfloat"sv,
    "charconv"sv,
    "chrono"sv,
    "cinttypes"sv,
    "climits"sv,
    "clocale"sv,
    "cmath"sv,
    "codecvt"sv,
    "compare"sv,
    "complex"sv,
    "concepts"sv,
    "condition_variable"sv,
    "coroutine"sv,
    "csetjmp"sv,
    "csignal"sv,
    "cstdarg"sv,
    "cstddef"sv,
    "cstdint"sv,
    "cstdio"sv,
    "cstdlib"sv,
    "cstring"sv,
    "ctime"sv,
    "cuchar"sv,
    "cwchar"sv,
    "cwctype"sv,
    "deque"sv,
    "exception"sv,
    "execution"sv,
    "expected"sv,
    "filesystem"sv,
    "flat_map"sv,
    "flat_set"sv,
    "format"sv,
    "forward_list"sv,
    "fstream"sv,
    "functional"sv,
    "future"sv,
    "generator"sv,
    "initializer_list"sv,
    "iomanip"sv,
    "ios"sv,
    "iosfwd"sv,
    "iostream"sv,
    "istream"sv,
    "iterator"sv,
    "latch"sv,
    "limits"sv,
    "list"sv,
    "locale"sv,
    "map"sv,
    "mdspan"sv,
    "memory"sv,
    "memory_resource"sv,
    "mutex"sv,
    "new"sv,
    "numbers"sv,
    "numeric"sv,
    "optional"sv,
    "ostream"sv,
    "print"sv,
    "queue"sv,
    "random"sv,
    "ranges"sv,
    "ratio"sv,
    "regex"sv,
    "scoped_allocator"sv,
    "semaphore"sv,
    "set"sv,
    "shared_mutex"sv,
    "source_location"sv,
    "span"sv,
    "spanstream"sv,
    "sstream"sv,
    "stack"sv,
    "stacktrace"sv,
    "stdexcept"sv,
    "stdfloat"sv,
    "stop_token"sv,
    "streambuf"sv,
    "string"sv,
    "string_view"sv,
    "strstream"sv,
    "syncstream"sv,
    "system_error"sv,
    "thread"sv,
    "tuple"sv,
    "type_traits"sv,
    "typeindex"sv,
    "typeinfo"sv,
    "unordered_map"sv,
    "unordered_set"sv,
    "utility"sv,
    "valarray"sv,
    "variant"sv,
    "vector"sv,
    "version"sv,
};
static_assert(std::ranges::is_sorted(standardHeaders));

// Without a folder in their names; those with one are told by it.
constexpr std::array systemHeaders{
    "aio.h"sv,      "assert.h"sv,   "ctype.h"sv,   "dirent.h"sv, "dlfcn.h"sv,  "errno.h"sv,  "fcntl.h"sv,
    "fnmatch.h"sv,  "fstab.h"sv,    "ftw.h"sv,     "getopt.h"sv, "glob.h"sv,   "grp.h"sv,    "iconv.h"sv,
    "inttypes.h"sv, "langinfo.h"sv, "libgen.h"sv,  "limits.h"sv, "locale.h"sv, "mntent.h"sv, "netdb.h"sv,
    "paths.h"sv,    "poll.h"sv,     "pthread.h"sv, "pwd.h"sv,    "regex.h"sv,  "sched.h"sv,  "semaphore.h"sv,
    "signal.h"sv,   "spawn.h"sv,    "stddef.h"sv,  "stdint.h"sv, "stdio.h"sv,  "stdlib.h"sv, "string.h"sv,
    "strings.h"sv,  "syslog.h"sv,   "termios.h"sv, "time.h"sv,   "unistd.h"sv, "utime.h"sv,  "utmpx.h"sv,
    "wchar.h"sv,    "wctype.h"sv,   "wordexp.h"sv,
};

constexpr std::array systemFolders{"arpa/"sv, "asm/"sv, "linux/"sv, "net/"sv, "netinet/"sv, "sys/"sv};

constexpr std::array platformMacros{
    "__ANDROID__"sv, "__APPLE__"sv, "__CYGWIN__"sv,  "__DragonFly__"sv, "__FreeBSD__"sv, "__GLIBC__"sv,
    "__HAIKU__"sv,   "__MACH__"sv,  "__MINGW32__"sv, "__NetBSD__"sv,    "__OpenBSD__"sv, "__gnu_linux__"sv,
    "__linux"sv,     "__linux__"sv, "__sun"sv,       "__unix"sv,        "__unix__"sv,    "_WIN32"sv,
    "_WIN64"sv,      "linux"sv,     "unix"sv,
};

} // namespace

bool isStandardHeader(std::string_view name) {
    return std::ranges::binary_search(standardHeaders, name);
}

bool isSystemHeader(std::string_view name) {
    const auto startsName = [name](std::string_view folder) { return name.starts_with(folder); };
    return std::ranges::find(systemHeaders, name) != systemHeaders.end()
           || std::ranges::any_of(systemFolders, startsName);
}

bool isPlatformMacro(std::string_view name) {
    return std::ranges::find(platformMacros, name) != platformMacros.end() || name.starts_with("Q_OS_");
}

} // namespace tolvane::architecture
