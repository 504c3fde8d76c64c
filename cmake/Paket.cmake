# The Debian package, made by cpack from what is installed.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME spurkiste)
set(CPACK_PACKAGE_VENDOR "The Spurkiste maintainers")
set(CPACK_PACKAGE_CONTACT "The Spurkiste maintainers <maintainers@spurkiste.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "folder of GPX files as a library")
set(CPACK_PACKAGE_DESCRIPTION
"Spurkiste makes a library out of a folder of GPX files. It reads every track
once, works out length, duration, ascent, start, finish and sport, names the
places without asking any server, and from then on opens only what has changed.
Tracks are found by typing, clicking and sorting; files can be imported,
renamed, trashed and given a sport.
.
The package holds the window program and spurkiste-cli for the command line.")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
# Each release of Debian gets a package of its own, linked with its libraries. The tilde lets a system that moves on to
# the next release take that one's package for the newer.
cmake_host_system_information(RESULT ausgabe QUERY DISTRIB_INFO)
if(ausgabe_ID AND ausgabe_VERSION_ID)
  string(REPLACE debian deb ausgabe_ID ${ausgabe_ID})
  set(CPACK_DEBIAN_PACKAGE_VERSION ${PROJECT_VERSION}~${ausgabe_ID}${ausgabe_VERSION_ID})
endif()
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Fonts that the window asks for by name: no library tells of them. Earlier packages of expat lack corrections for
# hostile files, which the library's own number does not tell.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-lato, fonts-dejavu-core, libexpat1 (>= 2.5.0-1+deb12u2)")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-noto-cjk, fonts-noto-color-emoji, qt6-translations-l10n, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
