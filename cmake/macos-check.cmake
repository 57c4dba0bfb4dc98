# Builds for macOS on Linux, for scripts/check-macos: Debian's clang and lld, its own libc++ headers, musl's headers
# beneath our own declarations of what is different on macOS, and text stubs in place of libraries.
#
# TOLVANE_MACOS_ARCHITECTURE is arm64 or x86_64; TOLVANE_MACOS_PARTS the folder that the script filled.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR "${TOLVANE_MACOS_ARCHITECTURE}")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TOLVANE_MACOS_ARCHITECTURE TOLVANE_MACOS_PARTS)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

find_program(TOLVANE_CLANG clang++-19 REQUIRED)
set(CMAKE_CXX_COMPILER "${TOLVANE_CLANG}")
set(CMAKE_OBJCXX_COMPILER "${TOLVANE_CLANG}")
foreach(language IN ITEMS CXX OBJCXX)
    set(CMAKE_${language}_COMPILER_TARGET "${TOLVANE_MACOS_ARCHITECTURE}-apple-macos13.4")
endforeach()
set(CMAKE_AR llvm-ar-19)
set(CMAKE_RANLIB llvm-ranlib-19)
set(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-19)
set(CMAKE_OSX_SYSROOT "")
set(CMAKE_OSX_DEPLOYMENT_TARGET 13.4)

cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH source)
set(declarations "${source}/tests/platform/macos/declarations")
set(includes "")
foreach(
    folder IN ITEMS
    "${TOLVANE_MACOS_PARTS}/config"
    /usr/lib/llvm-19/include/c++/v1
    /usr/lib/llvm-19/lib/clang/19/include
    "${declarations}/libc"
    "${TOLVANE_MACOS_PARTS}/musl"
    "${declarations}/frameworks"
    "${TOLVANE_MACOS_PARTS}/include"
)
    string(APPEND includes " -isystem ${folder}")
endforeach()
set(CMAKE_CXX_FLAGS_INIT "-nostdinc++ -nostdlibinc${includes}")
set(CMAKE_OBJCXX_FLAGS_INIT "${CMAKE_CXX_FLAGS_INIT}")

# Text stubs are all that is linked; a symbol that they do not name is an error.
file(GLOB stubs "${TOLVANE_MACOS_PARTS}/stubs/*.tbd")
list(JOIN stubs " " stubs)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld --ld-path=ld64.lld-19 -nostdlib -F ${TOLVANE_MACOS_PARTS}/frameworks ${stubs}")

set(EXPAT_INCLUDE_DIR "${TOLVANE_MACOS_PARTS}/include")
set(EXPAT_LIBRARY "${TOLVANE_MACOS_PARTS}/stubs/libexpat.tbd")
set(ZLIB_INCLUDE_DIR "${TOLVANE_MACOS_PARTS}/include")
set(ZLIB_LIBRARY "${TOLVANE_MACOS_PARTS}/stubs/libz.tbd")
set(GCRYPT_INCLUDE_DIR "${TOLVANE_MACOS_PARTS}/include")
set(GCRYPT_LIBRARY "${TOLVANE_MACOS_PARTS}/stubs/libgcrypt.tbd")
set(Qt6_DIR "${source}/tests/platform/macos/qt")
