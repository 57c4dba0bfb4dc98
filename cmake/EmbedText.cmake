# Compiles a text file into the program, so that nothing has to be found at run time.
#
#   tolvane_embed_text(OUT INPUT file HEADER header NAMESPACE namespace SYMBOL name)
#
# makes a build step that writes a source defining 'const std::string_view NAMESPACE::SYMBOL' (which HEADER
# declares) with the text of INPUT, and sets OUT to that source's path. The step is this same file, run as
# a script; it runs again when the text changes.

if(NOT CMAKE_SCRIPT_MODE_FILE)
    set(TOLVANE_EMBED_TEXT_SCRIPT "${CMAKE_CURRENT_LIST_FILE}")

    function(tolvane_embed_text out)
        cmake_parse_arguments(PARSE_ARGV 1 arg "" "INPUT;HEADER;NAMESPACE;SYMBOL" "")
        cmake_path(ABSOLUTE_PATH arg_INPUT BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" OUTPUT_VARIABLE input)
        set(output "${CMAKE_CURRENT_BINARY_DIR}/${arg_SYMBOL}.cpp")
        add_custom_command(
            OUTPUT "${output}"
            COMMAND
                "${CMAKE_COMMAND}" "-DINPUT=${input}" "-DOUTPUT=${output}" "-DHEADER=${arg_HEADER}"
                "-DNAMESPACE=${arg_NAMESPACE}" "-DSYMBOL=${arg_SYMBOL}" -P "${TOLVANE_EMBED_TEXT_SCRIPT}"
            DEPENDS "${input}" "${TOLVANE_EMBED_TEXT_SCRIPT}"
            COMMENT "Embedding ${arg_INPUT}"
            VERBATIM
        )
        if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
            # The pieces become one literal, longer than the 64 KiB that the standard asks of every compiler.
            set_source_files_properties("${output}" PROPERTIES COMPILE_OPTIONS -Wno-overlength-strings)
        endif()
        set(${out} "${output}" PARENT_SCOPE)
    endfunction()
    return()
endif()

foreach(parameter IN ITEMS INPUT OUTPUT HEADER NAMESPACE SYMBOL)
    if(NOT ${parameter})
        message(FATAL_ERROR "EmbedText: ${parameter} is not given")
    endif()
endforeach()

# Reading as text drops null characters and the carriage returns of line ends, which the length gives away.
file(READ "${INPUT}" text)
file(SIZE "${INPUT}" size)
string(LENGTH "${text}" length)
string(FIND "${text}" "\r" carriageReturn)
if(NOT length EQUAL size OR NOT carriageReturn EQUAL -1)
    message(FATAL_ERROR "${INPUT}: holds a null character or a carriage return")
endif()
string(FIND "${text}" ")embedded\"" endMark)
if(NOT endMark EQUAL -1)
    message(FATAL_ERROR "${INPUT}: holds the end mark of the embedded text")
endif()

# Cut at ends of lines, so that no piece ends inside a character of several bytes.
set(pieceLimit 8000)
set(literals "")
while(NOT text STREQUAL "")
    string(LENGTH "${text}" length)
    set(cut ${length})
    if(length GREATER pieceLimit)
        string(SUBSTRING "${text}" 0 ${pieceLimit} head)
        string(FIND "${head}" "\n" lastNewline REVERSE)
        if(lastNewline EQUAL -1)
            message(FATAL_ERROR "${INPUT}: holds a line of more than ${pieceLimit} bytes")
        endif()
        math(EXPR cut "${lastNewline} + 1")
    endif()
    string(SUBSTRING "${text}" 0 ${cut} piece)
    string(SUBSTRING "${text}" ${cut} -1 text)
    string(APPEND literals "\n    R\"embedded(${piece})embedded\"")
endwhile()
if(literals STREQUAL "")
    message(FATAL_ERROR "${INPUT}: is empty")
endif()

cmake_path(GET INPUT FILENAME inputName)
file(
    WRITE "${OUTPUT}"
    "// Made from ${inputName} by the build; changes to this file are lost.\n"
    "#include \"${HEADER}\"\n\n"
    "#include <string_view>\n\n"
    "namespace ${NAMESPACE} {\n\n"
    "constinit const std::string_view ${SYMBOL} =${literals};\n\n"
    "} // namespace ${NAMESPACE}\n"
)
