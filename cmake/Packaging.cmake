# `./dev package`: a Debian package of the programs. Library dependencies are read from the executables. Named here
# is what no executable links: libcurl is loaded when a book is looked up, the plugin that draws symbols when a
# window opens.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quirevault)
set(CPACK_PACKAGE_CONTACT "Quirevault maintainers <maintainers@quirevault.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION text)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libcurl4, libqt6svg6")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "breeze-icon-theme, ca-certificates, qt6-gtk-platformtheme, qt6-wayland")
install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
include(CPack)
