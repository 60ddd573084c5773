# What the PDF engine links, as the interface targets engine-shared-libraries and, for its program,
# engine-program-libraries.
#
# The program is linked statically where the archives exist. One starts for every document, and without the
# dynamic linker that takes 0.6 ms of processor instead of 2.0 ms (measured), a tenth of a small paper's import.
option(QUIREVAULT_STATIC_ENGINE "Link the PDF engine's program statically where possible" ON)

add_library(engine-shared-libraries INTERFACE)
target_link_libraries(engine-shared-libraries INTERFACE
  MuPDF::MuPDF PkgConfig::SECCOMP ICU::uc Threads::Threads)

# MuPDF's own text shaping is left out with its user, the layout of other formats than PDF.
set(engine_archives freetype png16 brotlidec brotlicommon jpeg jbig2dec openjp2 mujs gumbo z seccomp icuuc c)
set(engine_archive_files)
foreach(archive IN LISTS engine_archives)
  find_library(Engine_${archive}_ARCHIVE "lib${archive}.a")
  mark_as_advanced(Engine_${archive}_ARCHIVE)
  if(Engine_${archive}_ARCHIVE AND NOT archive STREQUAL "c")
    list(APPEND engine_archive_files "${Engine_${archive}_ARCHIVE}")
  elseif(NOT Engine_${archive}_ARCHIVE)
    set(engine_archive_missing "${archive}")
  endif()
endforeach()

add_library(engine-program-libraries INTERFACE)
if(QUIREVAULT_STATIC_ENGINE AND NOT engine_archive_missing AND NOT QUIREVAULT_SANITIZE)
  target_link_libraries(engine-program-libraries INTERFACE
    -Wl,--start-group "${MuPDF_LIBRARY}" "${MuPDF_THIRD_LIBRARY}" ${engine_archive_files} -Wl,--end-group
    m Threads::Threads)
  target_link_options(engine-program-libraries INTERFACE -static-pie -Wl,--gc-sections -Wl,-z,relro -Wl,-z,now)
else()
  target_link_libraries(engine-program-libraries INTERFACE engine-shared-libraries)
endif()
