# What makes the programs part of a desktop: the entry in its menu, the icon, the store's description, the service
# that starts the application by its name on the bus, manual page, completions and the guide.
#
# Dates are that of the last commit, so that the same sources give the same package.
set(packaging "${CMAKE_SOURCE_DIR}/packaging")
set(made "${CMAKE_BINARY_DIR}/packaging")
set(application org.quirevault.Quirevault)

string(TIMESTAMP QUIREVAULT_CHANGED "%a, %d %b %Y 00:00:00 +0000" UTC)
string(TIMESTAMP QUIREVAULT_DATE "%Y-%m-%d" UTC)
if(Git_FOUND AND EXISTS "${CMAKE_SOURCE_DIR}/.git")
  execute_process(COMMAND "${GIT_EXECUTABLE}" -C "${CMAKE_SOURCE_DIR}" log -1 --format=%cD%n%cs
                  OUTPUT_VARIABLE committed RESULT_VARIABLE failed OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  if(NOT failed AND committed MATCHES "^(.*)\n(.*)$")
    set(QUIREVAULT_CHANGED "${CMAKE_MATCH_1}")
    set(QUIREVAULT_DATE "${CMAKE_MATCH_2}")
  endif()
endif()
string(SUBSTRING "${QUIREVAULT_DATE}" 0 4 QUIREVAULT_YEAR)

# configure_at_install(NAME): makes ${made}/NAME of packaging/NAME.in while it installs, since only then the prefix
# is known: a package has another than the build.
function(configure_at_install name)
  install(CODE "
    set(PROJECT_VERSION \"${PROJECT_VERSION}\")
    set(QUIREVAULT_DATE \"${QUIREVAULT_DATE}\")
    set(CMAKE_INSTALL_FULL_LIBEXECDIR \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBEXECDIR}\")
    set(CMAKE_INSTALL_FULL_DOCDIR \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DOCDIR}\")
    configure_file(\"${packaging}/${name}.in\" \"${made}/${name}\" @ONLY)")
endfunction()

# install_compressed(FILE DESTINATION NAME): as NAME.gz, which one package system demands and all read. Without a
# time stamp, so that the same sources give the same package.
function(install_compressed file destination name)
  install(CODE "
    file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${destination}\")
    execute_process(COMMAND gzip -9nc \"${file}\" COMMAND_ERROR_IS_FATAL ANY
                    OUTPUT_FILE \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${destination}/${name}.gz\")")
endfunction()

install(FILES "${packaging}/${application}.desktop" DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
configure_at_install(${application}.metainfo.xml)
install(FILES "${made}/${application}.metainfo.xml" DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
configure_at_install(${application}.service)
install(FILES "${made}/${application}.service" DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
install(FILES "${packaging}/icons/${application}.svg" DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
foreach(size 48 64 128 256)
  install(FILES "${packaging}/icons/${application}-${size}.png" RENAME ${application}.png
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()
install(FILES "${packaging}/completions/quirevault.bash" RENAME quirevault
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES "${packaging}/completions/_quirevault" DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
install(FILES "${packaging}/completions/quirevault.fish" DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)

install(DIRECTORY "${CMAKE_SOURCE_DIR}/docs/" DESTINATION ${CMAKE_INSTALL_DOCDIR}/guide)
configure_at_install(quirevault.1)
install_compressed("${made}/quirevault.1" ${CMAKE_INSTALL_MANDIR}/man1 quirevault.1)
install_compressed("${CMAKE_SOURCE_DIR}/CHANGELOG.md" ${CMAKE_INSTALL_DOCDIR} changelog)
