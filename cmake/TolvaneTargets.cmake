# How Tolvane's folders become targets. A folder's CMakeLists.txt is one call of a function below, which
# takes every *.cpp directly in that folder; what lies in a folder beneath it belongs to that folder's call.
#
#   tolvane_library(NAME [LINKS target...] [SOURCES file...] [DEFINITIONS definition...])
#   tolvane_executable(NAME [LINKS target...] [SOURCES file...] [DEFINITIONS definition...])
#   tolvane_test(NAME [SERIAL] [LINKS target...])
#
# LINKS are the targets whose headers the folder may use. SOURCES given to a library are added to those
# found (generated ones, for instance); given to an executable they are the only ones. DEFINITIONS are
# seen by that target alone.

set(TOLVANE_WARNINGS
    -Wall
    -Wextra
    -Wpedantic
    -Wshadow
    -Wconversion
    -Wsign-conversion
    -Wdouble-promotion
    -Wold-style-cast
    -Wcast-qual
    -Wformat=2
    -Wundef
    -Wextra-semi
    -Wnon-virtual-dtor
    -Woverloaded-virtual
    -Wsuggest-override
)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # These two follow the optimiser into the standard library's strings, optionals and variants and report
    # paths that cannot be taken. What they are meant to find is looked for by scripts/lint and the
    # sanitizers instead.
    list(APPEND TOLVANE_WARNINGS -Wduplicated-cond -Wno-restrict -Wno-maybe-uninitialized)
endif()
if(TOLVANE_WARNINGS_AS_ERRORS)
    list(APPEND TOLVANE_WARNINGS -Werror)
endif()

# Sets OUT to the *.cpp files directly in the current folder, less those named after it.
function(tolvane_sources_of_folder OUT)
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    foreach(excluded IN LISTS ARGN)
        list(REMOVE_ITEM sources "${CMAKE_CURRENT_SOURCE_DIR}/${excluded}")
    endforeach()
    set(${OUT} "${sources}" PARENT_SCOPE)
endfunction()

# What every compiled target has in common.
function(tolvane_apply_house_rules name)
    target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}")
    target_compile_options(${name} PRIVATE ${TOLVANE_WARNINGS})
endfunction()

# A folder without sources of its own (headers only) becomes an INTERFACE library, so that its dependants
# are written the same way either way.
function(tolvane_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINKS;SOURCES;DEFINITIONS")
    tolvane_sources_of_folder(sources main.cpp)
    list(APPEND sources ${arg_SOURCES})
    if(NOT sources)
        add_library(${name} INTERFACE)
        target_include_directories(${name} INTERFACE "${PROJECT_SOURCE_DIR}")
        target_link_libraries(${name} INTERFACE ${arg_LINKS})
        return()
    endif()
    add_library(${name} STATIC ${sources})
    tolvane_apply_house_rules(${name})
    target_link_libraries(${name} PUBLIC ${arg_LINKS})
    target_compile_definitions(${name} PRIVATE ${arg_DEFINITIONS})
endfunction()

# A folder without sources yields no executable, and says so.
function(tolvane_executable name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINKS;SOURCES;DEFINITIONS")
    if(arg_SOURCES)
        set(found "")
        foreach(source IN LISTS arg_SOURCES)
            file(GLOB match CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${source}")
            list(APPEND found ${match})
        endforeach()
    else()
        tolvane_sources_of_folder(found)
    endif()
    if(NOT found)
        message(STATUS "No sources for ${name}: it is not built")
        return()
    endif()
    add_executable(${name} ${found})
    tolvane_apply_house_rules(${name})
    target_link_libraries(${name} PRIVATE ${arg_LINKS})
    target_compile_definitions(${name} PRIVATE ${arg_DEFINITIONS})
endfunction()

# What tests and the library they share have in common: where the sources and the built programs are, and
# one precompiled header for all of them (tests/CMakeLists.txt makes it).
function(tolvane_apply_test_rules name)
    target_compile_definitions(
        ${name}
        PRIVATE TOLVANE_SOURCE_DIR="${PROJECT_SOURCE_DIR}" TOLVANE_BINARY_DIR="${CMAKE_BINARY_DIR}/bin"
    )
    # As the toolkit has it done for whoever links it: code that shares a precompiled header must agree on it.
    target_compile_options(${name} PRIVATE -fPIC)
    target_precompile_headers(${name} REUSE_FROM tolvane_test_prelude)
endfunction()

# One GoogleTest program per folder. Its tests are listed when ctest runs, under the folder's name. SERIAL ones
# have the machine to themselves.
function(tolvane_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "SERIAL" "" "LINKS")
    tolvane_executable(${name} LINKS ${arg_LINKS} tolvane_test_support GTest::gmock_main)
    if(NOT TARGET ${name})
        return()
    endif()
    tolvane_apply_test_rules(${name})
    cmake_path(
        RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY "${PROJECT_SOURCE_DIR}/tests"
        OUTPUT_VARIABLE folder
    )
    gtest_discover_tests(
        ${name}
        TEST_PREFIX "${folder}/"
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 120
        PROPERTIES TIMEOUT 300 RUN_SERIAL ${arg_SERIAL}
    )
endfunction()
