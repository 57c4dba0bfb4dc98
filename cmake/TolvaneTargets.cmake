# How Tolvane's folders become targets. Each function below takes every *.cpp directly in a folder; what lies in a
# folder beneath it belongs to that folder's call. The libraries of the program are made from cmake/layers.
#
#   tolvane_library(NAME [FOLDER folder] [LINKS target...])
#   tolvane_executable(NAME [LINKS target...] [SOURCES file...] [DEFINITIONS definition...])
#   tolvane_test(NAME [SERIAL] [SHARDS number] [FOLDERS folder...] [LINKS target...] [PROGRAMS program...]
#                [APART file...])
#
# FOLDER is named from the root of the repository and is the current one unless given; FOLDERS lie in the current one
# and are taken with it. LINKS are the targets whose headers the folder may use. SOURCES given to an executable are
# its only ones. DEFINITIONS are seen by that target alone. PROGRAMS are those of TOLVANE_PROGRAMS_DIR that a test runs,
# which are built before it where this build makes them. Sources that stand APART are compiled by themselves, since they
# have names in common with others of the program.

set(TOLVANE_WARNINGS
    -Wall
    -Wextra
    -Wpedantic
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
if(NOT CMAKE_UNITY_BUILD)
    # Where sources are compiled together, a local name may be one of another source's; the release build compiles each
    # by itself.
    list(APPEND TOLVANE_WARNINGS -Wshadow)
endif()
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Every source is then an included one, and fixtures in its unnamed namespace are not seen from elsewhere.
    list(APPEND TOLVANE_WARNINGS -Wno-subobject-linkage)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # These two follow the optimiser into the standard library's strings, optionals and variants and report
    # paths that cannot be taken. What they are meant to find is looked for by scripts/lint and the
    # sanitizers instead.
    list(APPEND TOLVANE_WARNINGS -Wduplicated-cond -Wno-restrict -Wno-maybe-uninitialized)
endif()
if(TOLVANE_WARNINGS_AS_ERRORS)
    list(APPEND TOLVANE_WARNINGS -Werror)
endif()

# Sets OUT to the *.cpp files directly in a folder, on macOS also the *.mm files, less those named after it.
function(tolvane_sources_of_folder OUT folder)
    file(GLOB sources CONFIGURE_DEPENDS "${folder}/*.cpp")
    if(APPLE)
        file(GLOB objectiveC CONFIGURE_DEPENDS "${folder}/*.mm")
        set_source_files_properties(${objectiveC} PROPERTIES COMPILE_OPTIONS -fobjc-arc)
        list(APPEND sources ${objectiveC})
    endif()
    foreach(excluded IN LISTS ARGN)
        list(REMOVE_ITEM sources "${folder}/${excluded}")
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
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "FOLDER" "LINKS")
    set(folder "${CMAKE_CURRENT_SOURCE_DIR}")
    if(arg_FOLDER)
        set(folder "${PROJECT_SOURCE_DIR}/${arg_FOLDER}")
    endif()
    tolvane_sources_of_folder(sources "${folder}" main.cpp)
    if(NOT sources)
        add_library(${name} INTERFACE)
        target_include_directories(${name} INTERFACE "${PROJECT_SOURCE_DIR}")
        target_link_libraries(${name} INTERFACE ${arg_LINKS})
        return()
    endif()
    add_library(${name} STATIC ${sources})
    tolvane_apply_house_rules(${name})
    target_link_libraries(${name} PUBLIC ${arg_LINKS})
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
        tolvane_sources_of_folder(found "${CMAKE_CURRENT_SOURCE_DIR}")
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

# What tests and the library they share have in common: where the sources and this build's programs are, and
# one precompiled header for all of them (tests/CMakeLists.txt makes it).
function(tolvane_apply_test_rules name)
    target_compile_definitions(
        ${name}
        PRIVATE TOLVANE_SOURCE_DIR="${PROJECT_SOURCE_DIR}" TOLVANE_BINARY_DIR="${CMAKE_BINARY_DIR}/bin"
    )
    # As Qt requires of code that links it: code that shares a precompiled header must agree on it.
    target_compile_options(${name} PRIVATE -fPIC)
    target_precompile_headers(${name} REUSE_FROM tolvane_test_prelude)
endfunction()

# One GoogleTest program per folder, which ctest runs in as many processes as it has shards. SERIAL ones have the
# machine to themselves.
function(tolvane_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "SERIAL" "SHARDS" "FOLDERS;LINKS;PROGRAMS;APART")
    list(TRANSFORM arg_FOLDERS APPEND "/*.cpp" OUTPUT_VARIABLE sources)
    tolvane_executable(${name} SOURCES "*.cpp" ${sources} LINKS ${arg_LINKS} tolvane_test_support)
    if(NOT TARGET ${name})
        return()
    endif()
    tolvane_apply_test_rules(${name})
    set_source_files_properties(${arg_APART} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    add_dependencies(tolvane-tests ${name})
    foreach(program IN LISTS arg_PROGRAMS)
        if(TARGET ${program} AND TOLVANE_PROGRAMS_DIR STREQUAL "${CMAKE_BINARY_DIR}/bin")
            add_dependencies(${name} ${program})
        endif()
    endforeach()
    cmake_path(
        RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY "${PROJECT_SOURCE_DIR}/tests"
        OUTPUT_VARIABLE folder
    )
    if(NOT arg_SHARDS)
        set(arg_SHARDS 1)
    endif()
    foreach(shard RANGE 1 ${arg_SHARDS})
        math(EXPR index "${shard} - 1")
        add_test(NAME "${folder}/${shard}-of-${arg_SHARDS}" COMMAND ${name} --gtest_brief=1)
        set_tests_properties(
            "${folder}/${shard}-of-${arg_SHARDS}"
            PROPERTIES
                ENVIRONMENT "GTEST_TOTAL_SHARDS=${arg_SHARDS};GTEST_SHARD_INDEX=${index}"
                RUN_SERIAL ${arg_SERIAL}
                TIMEOUT 1800
        )
    endforeach()
endfunction()
