# Tolvane.app: the desktop program with the terminal program beside it, Info.plist and the icon. Only macOS itself can
# make an icon file of the pictures, so elsewhere the bundle has the pictures alone.
tolvane_executable(tolvane SOURCES desktop/main.cpp LINKS tolvane_app_desktop_macos tolvane_icons)
set_target_properties(
    tolvane
    PROPERTIES
        OUTPUT_NAME Tolvane
        MACOSX_BUNDLE ON
        MACOSX_BUNDLE_INFO_PLIST "${PROJECT_SOURCE_DIR}/packaging/macos/Info.plist.in"
)

add_custom_command(
    TARGET tolvane
    POST_BUILD
    COMMAND
        "${CMAKE_COMMAND}" -E copy "$<TARGET_FILE:tolvane-cli>"
        "$<TARGET_BUNDLE_CONTENT_DIR:tolvane>/MacOS/tolvane-cli"
    VERBATIM
)
add_dependencies(tolvane tolvane-cli)

find_program(RSVG_CONVERT rsvg-convert REQUIRED)
set(icons "${PROJECT_SOURCE_DIR}/interface/icons")
set(iconSet "${CMAKE_CURRENT_BINARY_DIR}/Tolvane.iconset")
file(MAKE_DIRECTORY "${iconSet}")
set(pictures "")
foreach(points IN ITEMS 16 32 128 256 512)
    foreach(scale IN ITEMS 1 2)
        math(EXPR pixels "${points} * ${scale}")
        set(drawing "${icons}/example.tolvane.tolvane.svg")
        if(pixels EQUAL 16)
            set(drawing "${icons}/small/example.tolvane.tolvane.svg")
        endif()
        set(picture "${iconSet}/icon_${points}x${points}.png")
        if(scale EQUAL 2)
            set(picture "${iconSet}/icon_${points}x${points}@2x.png")
        endif()
        add_custom_command(
            OUTPUT "${picture}"
            COMMAND "${RSVG_CONVERT}" --width ${pixels} --height ${pixels} --output "${picture}" "${drawing}"
            DEPENDS "${drawing}"
            COMMENT "Drawing the icon in ${pixels} pixels"
            VERBATIM
        )
        list(APPEND pictures "${picture}")
    endforeach()
endforeach()
add_custom_target(tolvane-iconset DEPENDS ${pictures})
add_dependencies(tolvane tolvane-iconset)

if(CMAKE_HOST_APPLE)
    set(iconFile "${CMAKE_CURRENT_BINARY_DIR}/Tolvane.icns")
    add_custom_command(
        OUTPUT "${iconFile}"
        COMMAND iconutil --convert icns --output "${iconFile}" "${iconSet}"
        DEPENDS ${pictures}
        COMMENT "Making the icon file"
        VERBATIM
    )
    target_sources(tolvane PRIVATE "${iconFile}")
    set_source_files_properties("${iconFile}" PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
endif()

install(TARGETS tolvane BUNDLE DESTINATION . COMPONENT desktop)
