# Installation as a desktop application and the Debian package (cpack -G DEB): the binary, the
# launcher entry, the icon in the hicolor theme (SVG and PNG sizes), AppStream metainfo and the
# D-Bus service file that lets a command-line call start the application.
# The package installs under /usr, and the D-Bus service file names the binary's full path, so
# one prefix serves both (pass -DCMAKE_INSTALL_PREFIX for a local installation).
if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT)
    set(CMAKE_INSTALL_PREFIX /usr CACHE PATH "Installation prefix" FORCE)
endif()
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
include(GNUInstallDirs)

set(OSTREL_APP_ID com.ostrel.motion)
set(linux_dir ${PROJECT_SOURCE_DIR}/resources/linux)
set(icon_svg ${PROJECT_SOURCE_DIR}/resources/images/common_toolbarlogo.svg)

install(TARGETS ostrel-motion RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${linux_dir}/${OSTREL_APP_ID}.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${icon_svg} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
        RENAME ${OSTREL_APP_ID}.svg)

set(icon_pngs)
foreach(size 16 24 32 48 64 128 256)
    set(png ${CMAKE_CURRENT_BINARY_DIR}/icons/${size}/${OSTREL_APP_ID}.png)
    add_custom_command(OUTPUT ${png}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/icons/${size}
        COMMAND ostrel-icon-render ${icon_svg} ${size} ${png}
        DEPENDS ostrel-icon-render ${icon_svg}
        COMMENT "Rendering the ${size}px application icon")
    install(FILES ${png}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
    list(APPEND icon_pngs ${png})
endforeach()
add_custom_target(ostrel_icons ALL DEPENDS ${icon_pngs})

configure_file(${linux_dir}/${OSTREL_APP_ID}.metainfo.xml.in
               ${CMAKE_CURRENT_BINARY_DIR}/${OSTREL_APP_ID}.metainfo.xml @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${OSTREL_APP_ID}.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
configure_file(${linux_dir}/${OSTREL_APP_ID}.service.in
               ${CMAKE_CURRENT_BINARY_DIR}/${OSTREL_APP_ID}.service @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${OSTREL_APP_ID}.service
        DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)

# What Debian expects of every package: the copyright file, a compressed changelog (named for a
# native package) and a manual page.
set(doc_dir ${CMAKE_INSTALL_DATADIR}/doc/ostrel-motion)
install(FILES ${linux_dir}/copyright DESTINATION ${doc_dir})
configure_file(${linux_dir}/changelog.in ${CMAKE_CURRENT_BINARY_DIR}/changelog @ONLY)
set(gzipped ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz ${CMAKE_CURRENT_BINARY_DIR}/ostrel-motion.1.gz)
add_custom_command(OUTPUT ${gzipped}
    COMMAND gzip -9nc ${CMAKE_CURRENT_BINARY_DIR}/changelog > changelog.gz
    COMMAND gzip -9nc ${linux_dir}/ostrel-motion.1 > ostrel-motion.1.gz
    DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/changelog ${linux_dir}/ostrel-motion.1
    WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
add_custom_target(ostrel_package_docs ALL DEPENDS ${gzipped})
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz DESTINATION ${doc_dir})
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ostrel-motion.1.gz
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ostrel-motion)
set(CPACK_PACKAGE_VENDOR Ostrel)
set(CPACK_PACKAGE_CONTACT "Ostrel Motion team <motion@ostrel.example.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "companion for Bluetooth sit-stand desks")
set(CPACK_PACKAGE_DESCRIPTION
    "A tray utility and one window that find and pair Bluetooth Low Energy
sit-stand desks, show their live height, move them while Up or Down is held,
keep their height presets and remind the user to alternate sitting and
standing.")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://ostrel.example.com)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# BlueZ is the Bluetooth stack QtBluetooth talks to; the tray needs a status-notifier host.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS bluez)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
