# The Debian packages that CPack makes of the two components; scripts/package calls it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tolvane)
set(CPACK_PACKAGE_VENDOR "The Tolvane authors")
set(CPACK_PACKAGE_CONTACT "The Tolvane authors <maintainers@tolvane.example>")
# Some of the files contain the prefix.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES TRUE)
# Each description below begins with a summary of its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE
)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
# Each Debian release has libraries of other names, so each has packages of its own; a newer release's replace an older's.
cmake_host_system_information(RESULT system QUERY DISTRIB_ID DISTRIB_VERSION_ID)
if(system MATCHES "^debian;([0-9]+)$")
    string(APPEND CPACK_DEBIAN_PACKAGE_RELEASE "+deb${CMAKE_MATCH_1}")
endif()
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION TRUE)

set(CPACK_COMPONENTS_ALL cli)
set(CPACK_DEBIAN_CLI_PACKAGE_NAME tolvane-cli)
set(CPACK_DEBIAN_CLI_PACKAGE_SECTION utils)
set(CPACK_COMPONENT_CLI_DESCRIPTION
    "facts that a file system keeps about files, in a terminal
Prints what file browsers hide: both sets of size measures, octal
permissions, owner and group, dates, type identifier, link count,
extended attributes, file reference URL and a bookmark. The file is never
opened.

It also decodes Mac bookmarks and alias files, and finds the files they
refer to. For scripts it prints JSON. This package needs no graphical
libraries."
)

if(TOLVANE_DESKTOP)
    list(APPEND CPACK_COMPONENTS_ALL desktop)
    set(CPACK_DEBIAN_DESKTOP_PACKAGE_NAME tolvane)
    set(CPACK_DEBIAN_DESKTOP_PACKAGE_SECTION utils)
    # The fallback icon theme defines the folders of the icon sizes. Qt's plugin draws the icon of windows; it is in the
    # library's own package in Debian 12 only.
    set(CPACK_DEBIAN_DESKTOP_PACKAGE_DEPENDS "hicolor-icon-theme, qt6-svg-plugins | libqt6svg6 (<< 6.5)")
    # All of these are optional: the session bus for one instance and for revealing files, xdg-open if no file manager
    # answers, the terminal program, which the messages name, Qt's part for Wayland, and what Nautilus and Caja need for
    # entries in their menus.
    set(CPACK_DEBIAN_DESKTOP_PACKAGE_RECOMMENDS
        "tolvane-cli, default-dbus-session-bus | dbus-session-bus, xdg-utils, qt6-wayland, python3-nautilus, python3-caja"
    )
    set(CPACK_COMPONENT_DESKTOP_DESCRIPTION
        "facts that a file system keeps about files, in windows
Shows what file browsers hide: both sets of size measures, octal
permissions, owner and group, dates, type identifier, link count,
extended attributes, file reference URL and a bookmark. Every value can be
copied exactly, and all of them saved as a report. The file is never
opened.

It also decodes Mac bookmarks and alias files, finds the files they refer
to, and shows a preview."
    )
endif()

include(CPack)
