# Where `cmake --install` puts the program, and the Debian package `cpack -G DEB` makes of it:
# the three programs, the desktop entry, the file types, the icon, the manual pages and the help
# pages, each in its usual XDG or FHS place under the prefix.
# The documents go where Debian looks for the package's own: under its name, not the project's.
if(NOT CMAKE_INSTALL_DOCDIR)
    set(CMAKE_INSTALL_DOCDIR share/doc/ostrel CACHE PATH "Documentation (share/doc/ostrel)" FORCE)
endif()
include(GNUInstallDirs)

install(TARGETS ostrel ostrel-export velquin-sim RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(OSTREL_DESKTOP_DIR ${CMAKE_SOURCE_DIR}/desktop)
install(FILES ${OSTREL_DESKTOP_DIR}/ostrel.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
# update-mime-database reads packages by their file name: the vendor's name comes first.
install(FILES ${OSTREL_DESKTOP_DIR}/ostrel-mime.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME ostrel.xml)
install(FILES ${OSTREL_DESKTOP_DIR}/icons/ostrel.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
foreach(size 16 22 24 32 48 64 128 256)
    install(FILES ${OSTREL_DESKTOP_DIR}/icons/${size}x${size}/ostrel.png
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()

# Manual pages go in compressed, as Debian's policy asks of a package.
find_program(OSTREL_GZIP gzip)
foreach(page ostrel.1 ostrel-export.1 velquin-sim.1)
    set(source ${OSTREL_DESKTOP_DIR}/man/${page})
    if(OSTREL_GZIP)
        add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/man/${page}.gz
            COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/man
            COMMAND ${OSTREL_GZIP} -9n -c ${source} > ${CMAKE_BINARY_DIR}/man/${page}.gz
            DEPENDS ${source} VERBATIM)
        list(APPEND OSTREL_MAN_PAGES ${CMAKE_BINARY_DIR}/man/${page}.gz)
    else()
        list(APPEND OSTREL_MAN_PAGES ${source})
    endif()
endforeach()
add_custom_target(man_pages ALL DEPENDS ${OSTREL_MAN_PAGES})
install(FILES ${OSTREL_MAN_PAGES} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
if(OSTREL_GZIP)
    add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/changelog.gz
        COMMAND ${OSTREL_GZIP} -9n -c ${OSTREL_DESKTOP_DIR}/changelog > ${CMAKE_BINARY_DIR}/changelog.gz
        DEPENDS ${OSTREL_DESKTOP_DIR}/changelog VERBATIM)
    add_custom_target(changelog ALL DEPENDS ${CMAKE_BINARY_DIR}/changelog.gz)
    install(FILES ${CMAKE_BINARY_DIR}/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})
endif()

# The help pages are also built into the program; these copies are for reading without it.
if(EXISTS ${CMAKE_SOURCE_DIR}/help)
    install(DIRECTORY ${CMAKE_SOURCE_DIR}/help/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/help
            PATTERN CMakeLists.txt EXCLUDE PATTERN *.qrc EXCLUDE)
endif()

set(CPACK_PACKAGE_NAME ostrel)
set(CPACK_PACKAGE_VENDOR "Ostrel MS")
set(CPACK_PACKAGE_CONTACT "Ostrel MS maintainers <maintainers@ostrel.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "chart recorder for a low-pressure chromatography instrument")
# One string: the parts of a list would be joined by semicolons.
string(CONCAT CPACK_PACKAGE_DESCRIPTION
    "Ostrel MS records the UV absorbance and conductivity traces that a\n"
    "Velquin instrument sends over a serial line, with event marks, run labels\n"
    "and method text. Runs are saved, opened in tabs, printed and exported to\n"
    "text; ostrel-export converts runs to text, JSON or AIA/ANDI chromatography\n"
    "files, and velquin-sim simulates the instrument.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_STRIP_FILES ON)
include(CPack)
