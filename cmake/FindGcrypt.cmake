# Finds Libgcrypt, for which CMake has no module: the target Gcrypt::Gcrypt.

find_path(GCRYPT_INCLUDE_DIR gcrypt.h)
find_library(GCRYPT_LIBRARY gcrypt)
mark_as_advanced(GCRYPT_INCLUDE_DIR GCRYPT_LIBRARY)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Gcrypt REQUIRED_VARS GCRYPT_LIBRARY GCRYPT_INCLUDE_DIR)
if(Gcrypt_FOUND AND NOT TARGET Gcrypt::Gcrypt)
    add_library(Gcrypt::Gcrypt UNKNOWN IMPORTED)
    set_target_properties(Gcrypt::Gcrypt PROPERTIES
        IMPORTED_LOCATION "${GCRYPT_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${GCRYPT_INCLUDE_DIR}"
    )
endif()
