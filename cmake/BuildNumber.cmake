# Sets QUIREVAULT_BUILD: the number of commits behind this build and the last one's hash, as of the
# configuration; "unknown" outside a checkout, in a shallow one, or without git.
set(QUIREVAULT_BUILD "unknown")
find_package(Git QUIET)
if(Git_FOUND AND EXISTS "${CMAKE_SOURCE_DIR}/.git" AND NOT EXISTS "${CMAKE_SOURCE_DIR}/.git/shallow")
  set(ask_git "${GIT_EXECUTABLE}" -C "${CMAKE_SOURCE_DIR}")
  execute_process(COMMAND ${ask_git} rev-list --count HEAD
                  OUTPUT_VARIABLE commits RESULT_VARIABLE failed OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  execute_process(COMMAND ${ask_git} rev-parse --short HEAD
                  OUTPUT_VARIABLE hash OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  if(NOT failed)
    set(QUIREVAULT_BUILD "${commits} (${hash})")
  endif()
endif()
