# The files by which desktops find the search provider, and the bus its program. Where the program lies is known when
# it is installed: a package's prefix is not the one that the build was configured with.
set(packaging "${CMAKE_SOURCE_DIR}/packaging")
set(provider_service org.quirevault.Quirevault.SearchProvider.service)
install(CODE "
  set(quirevault_libexec \"${CMAKE_INSTALL_LIBEXECDIR}/quirevault\")
  cmake_path(ABSOLUTE_PATH quirevault_libexec BASE_DIRECTORY \"\${CMAKE_INSTALL_PREFIX}\" NORMALIZE)
  configure_file(\"${packaging}/${provider_service}.in\" \"${CMAKE_BINARY_DIR}/packaging/${provider_service}\" @ONLY)")
install(FILES "${CMAKE_BINARY_DIR}/packaging/${provider_service}"
        DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
install(FILES "${packaging}/org.quirevault.Quirevault.search-provider.ini"
        DESTINATION ${CMAKE_INSTALL_DATADIR}/gnome-shell/search-providers)
install(FILES "${packaging}/plasma-runner-quirevault.desktop"
        DESTINATION ${CMAKE_INSTALL_DATADIR}/krunner/dbusplugins)
