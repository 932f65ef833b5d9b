# What is installed where, and the packages that are made of it (packaging/paket).

set(desktopFiles ${CMAKE_SOURCE_DIR}/packaging/desktop)
set(packagingBinary ${CMAKE_BINARY_DIR}/packaging)

# ---- the program and its components, which lie beside it

get_property(kalvoModules GLOBAL PROPERTY kalvo_modules)
install(TARGETS kalvo RUNTIME DESTINATION lib/kalvo)
install(TARGETS ${kalvoModules} LIBRARY DESTINATION lib/kalvo)
file(MAKE_DIRECTORY ${packagingBinary}/bin)
file(CREATE_LINK ../lib/kalvo/kalvo ${packagingBinary}/bin/kalvo SYMBOLIC)
install(FILES ${packagingBinary}/bin/kalvo DESTINATION bin)

# ---- for the desktop

configure_file(${desktopFiles}/example.kalvo.kalvo.metainfo.xml.in
               ${packagingBinary}/example.kalvo.kalvo.metainfo.xml @ONLY)
install(FILES ${desktopFiles}/kalvo.desktop DESTINATION share/applications)
install(FILES ${packagingBinary}/example.kalvo.kalvo.metainfo.xml DESTINATION share/metainfo)
install(FILES ${desktopFiles}/kalvo-mime.xml DESTINATION share/mime/packages RENAME kalvo.xml)

set(sign ${CMAKE_SOURCE_DIR}/src/widgets/icons/app.svg)
set(iconSizes 16 22 24 32 48 64 128 256)
list(TRANSFORM iconSizes REPLACE "(.+)" "${packagingBinary}/icons/\\1.png" OUTPUT_VARIABLE pictures)
add_executable(kalvo-symbole ${CMAKE_SOURCE_DIR}/packaging/kalvo-symbole.cpp)
target_link_libraries(kalvo-symbole PRIVATE Qt6::Svg)
add_custom_command(OUTPUT ${pictures} COMMAND kalvo-symbole ${sign} ${packagingBinary}/icons ${iconSizes}
                   DEPENDS ${sign} kalvo-symbole VERBATIM)
add_custom_target(kalvo_icons ALL DEPENDS ${pictures})
install(FILES ${sign} DESTINATION share/icons/hicolor/scalable/apps RENAME kalvo.svg)
foreach(size ${iconSizes})
  install(FILES ${packagingBinary}/icons/${size}.png DESTINATION share/icons/hicolor/${size}x${size}/apps
          RENAME kalvo.png)
endforeach()

# ---- documents

# Compressed as the distribution wants it: without a time of its own.
function(kalvo_install_compressed file name destination)
  execute_process(COMMAND gzip -9nc ${file} OUTPUT_FILE ${packagingBinary}/${name}.gz COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${packagingBinary}/${name}.gz DESTINATION ${destination})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
endfunction()

set(KALVO_MAINTAINER "Kalvo <paket@kalvo.example>")
execute_process(COMMAND date -u -d ${KALVO_RELEASE_DATE} "+%a, %d %b %Y %H:%M:%S +0000"
                OUTPUT_VARIABLE changelogDate OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
configure_file(${CMAKE_SOURCE_DIR}/packaging/debian/changelog.in ${packagingBinary}/changelog.Debian @ONLY)
configure_file(${CMAKE_SOURCE_DIR}/packaging/tarball/LIESMICH.txt.in ${packagingBinary}/LIESMICH.txt @ONLY)
kalvo_install_compressed(${packagingBinary}/changelog.Debian changelog.Debian share/doc/kalvo)
kalvo_install_compressed(${CMAKE_SOURCE_DIR}/CHANGELOG.md changelog share/doc/kalvo)
kalvo_install_compressed(${CMAKE_SOURCE_DIR}/packaging/debian/kalvo.1 kalvo.1 share/man/man1)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/debian/copyright DESTINATION share/doc/kalvo)

# ---- packages: "deb" for a Debian 12, "tgz" to run from its folder

set(CPACK_PACKAGE_NAME kalvo)
set(CPACK_PACKAGE_VENDOR Kalvo)
set(CPACK_PACKAGE_CONTACT ${KALVO_MAINTAINER})
set(CPACK_PACKAGE_HOMEPAGE_URL https://${KALVO_WEB_ADDRESS})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "play and mix music live")
set(CPACK_PACKAGE_DESCRIPTION
    "Two players with playlists, a cross-fader and the automatic hand-over between
them, and a music archive for MP3 and OGG that searches and sorts a hundred
thousand titles at once. Pre-listening on headphones, equalizer, recording, an
automatic DJ, files played at set times, sampler pads and guests' wishes.
.
The program speaks German.")
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_THREADS 0)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_SOURCE_DIR}/cmake/KalvoPackageKinds.cmake)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS hicolor-icon-theme)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# What only one of the two kinds holds; cmake/KalvoPackageKinds.cmake asks for it.
install(FILES ${packagingBinary}/LIESMICH.txt DESTINATION . COMPONENT tgz EXCLUDE_FROM_ALL)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/debian/kalvo.lintian-overrides DESTINATION share/lintian/overrides
        RENAME kalvo COMPONENT deb EXCLUDE_FROM_ALL)
include(CPack)
