# The flags that every target of the project is built with, as one interface target.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  # Precompiled headers and checkouts at other places still hit with these settings.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      CCACHE_NOHASHDIR=1 CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} ${CCACHE_PROGRAM})
endif()

add_library(quirevault-options INTERFACE)
target_compile_features(quirevault-options INTERFACE cxx_std_20)
target_compile_options(quirevault-options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -fno-omit-frame-pointer)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(quirevault-options INTERFACE -fpch-preprocess)
endif()
if(QUIREVAULT_WERROR)
  target_compile_options(quirevault-options INTERFACE -Werror)
endif()
if(QUIREVAULT_SANITIZE)
  target_compile_options(quirevault-options INTERFACE -fsanitize=${QUIREVAULT_SANITIZE} -fno-sanitize-recover=all -O1)
  target_link_options(quirevault-options INTERFACE -fsanitize=${QUIREVAULT_SANITIZE})
endif()
target_compile_definitions(quirevault-options INTERFACE QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_USE_QSTRINGBUILDER)
target_include_directories(quirevault-options INTERFACE "${CMAKE_SOURCE_DIR}/src")
