# Debian's headers of Qt as targets, for scripts/check-macos, with text stubs in place of the libraries.
set(headers "${TOLVANE_MACOS_PARTS}/qt/include")
foreach(tool IN ITEMS uic rcc)
    add_executable(Qt6::${tool} IMPORTED)
    set_target_properties(Qt6::${tool} PROPERTIES IMPORTED_LOCATION "/usr/lib/qt6/libexec/${tool}")
endforeach()
foreach(module IN ITEMS Core Gui Widgets Network Svg)
    add_library(Qt6::${module} INTERFACE IMPORTED)
    set_target_properties(
        Qt6::${module}
        PROPERTIES
            INTERFACE_INCLUDE_DIRECTORIES "${headers};${headers}/Qt${module}"
            INTERFACE_LINK_LIBRARIES "${TOLVANE_MACOS_PARTS}/qt/libQt6${module}.tbd"
    )
endforeach()
target_link_libraries(Qt6::Gui INTERFACE Qt6::Core)
target_link_libraries(Qt6::Widgets INTERFACE Qt6::Gui)
target_link_libraries(Qt6::Network INTERFACE Qt6::Core)
target_link_libraries(Qt6::Svg INTERFACE Qt6::Gui)
