# add_layer(name [USES layer...] [LIBRARIES target...] [PRIVATE_LIBRARIES target...] [PRECOMPILED header])
#
# Makes the static library quirevault-<name> of every source file in src/<name>. Layers are declared from
# the bottom up and may use only what was declared before them, so an include arrow that runs upwards has
# no target to link and stops the configuration here. `./dev lint` reads the same calls.
function(add_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 layer "" "PRECOMPILED" "USES;LIBRARIES;PRIVATE_LIBRARIES")
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
       "${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.h")
  add_library(quirevault-${name} STATIC ${sources})
  target_link_libraries(quirevault-${name}
    PUBLIC quirevault-options Qt6::Core ${layer_LIBRARIES} PRIVATE ${layer_PRIVATE_LIBRARIES})
  foreach(used IN LISTS layer_USES)
    if(NOT TARGET quirevault-${used})
      message(FATAL_ERROR "The layer ${name} uses ${used}, which is not below it")
    endif()
    target_link_libraries(quirevault-${name} PUBLIC quirevault-${used})
  endforeach()
  if(NOT layer_PRECOMPILED)
    set(layer_PRECOMPILED precompiled.h)
  endif()
  target_precompile_headers(quirevault-${name} PRIVATE "${CMAKE_SOURCE_DIR}/cmake/${layer_PRECOMPILED}")
endfunction()
