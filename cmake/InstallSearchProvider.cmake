# The files by which desktops find the search provider, and the bus its program. After InstallDesktopFiles.
set(provider_service org.quirevault.Quirevault.SearchProvider.service)
configure_at_install(${provider_service})
install(FILES "${made}/${provider_service}" DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
install(FILES "${packaging}/org.quirevault.Quirevault.search-provider.ini"
        DESTINATION ${CMAKE_INSTALL_DATADIR}/gnome-shell/search-providers)
install(FILES "${packaging}/plasma-runner-quirevault.desktop"
        DESTINATION ${CMAKE_INSTALL_DATADIR}/krunner/dbusplugins)
