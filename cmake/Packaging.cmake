# `./dev package`: a Debian package of the programs. Library dependencies are read from the executables. Named here
# is what no executable links: libcurl is loaded when a book is looked up, libcrypto and libturbojpeg for the first
# hash and cover, the plugin that draws symbols and the theme they are from when a window opens. Qt brings its
# plugin for X11 itself, the one for Wayland is a package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quirevault)
set(CPACK_PACKAGE_CONTACT "Quirevault maintainers <maintainers@quirevault.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "PDF library and reader for researchers")
set(CPACK_PACKAGE_DESCRIPTION
"Give it folders of PDFs. Minutes later, type half of a phrase that you
remember, and it shows the papers and the passages with their pages, in a
window or on the command line.
.
Papers are browsed by cover and tag, and read in windows that open at the
passage, with outline, search and bookmarks. Everything stays on the machine:
one SQLite database, a folder of covers, and the PDFs where they are, never
changed. Each PDF is read by an engine in a confined process of its own.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION text)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libcurl4, libssl3, libturbojpeg0, libqt6svg6, breeze-icon-theme")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "ca-certificates, default-dbus-session-bus | dbus-session-bus, qt6-gtk-platformtheme, qt6-wayland")

# The full text of the licence, as a paragraph of the copyright file.
file(READ "${CMAKE_SOURCE_DIR}/LICENSE" QUIREVAULT_LICENSE_TEXT)
string(STRIP "${QUIREVAULT_LICENSE_TEXT}" QUIREVAULT_LICENSE_TEXT)
string(REGEX REPLACE "\n" "\n " QUIREVAULT_LICENSE_TEXT " ${QUIREVAULT_LICENSE_TEXT}")
string(REGEX REPLACE "\n *\n" "\n .\n" QUIREVAULT_LICENSE_TEXT "${QUIREVAULT_LICENSE_TEXT}")
string(REGEX REPLACE "\n *\n" "\n .\n" QUIREVAULT_LICENSE_TEXT "${QUIREVAULT_LICENSE_TEXT}")
configure_file("${packaging}/debian/copyright.in" "${made}/copyright" @ONLY)
configure_file("${packaging}/debian/changelog.in" "${made}/changelog.Debian" @ONLY)

install(FILES "${made}/copyright" DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES "${packaging}/debian/lintian-overrides" DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME quirevault)
install_compressed("${made}/changelog.Debian" ${CMAKE_INSTALL_DOCDIR} changelog.Debian)

# Everything that is installed, so that a package is made without building tests and benchmarks.
add_custom_target(quirevault-installed
  DEPENDS quirevault quirevault-desktop-program quirevault-pdf-engine quirevault-search-provider)
include(CPack)
