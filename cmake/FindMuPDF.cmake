# Defines MuPDF::MuPDF. Written by hand because Debian's mupdf.pc names libraries that do not exist there.
find_path(MuPDF_INCLUDE_DIR mupdf/fitz.h)
find_library(MuPDF_LIBRARY mupdf)
find_library(MuPDF_THIRD_LIBRARY mupdf-third)
set(MuPDF_PARTS)
foreach(part harfbuzz freetype jpeg jbig2dec openjp2 mujs gumbo z m)
  find_library(MuPDF_${part}_LIBRARY ${part})
  if(MuPDF_${part}_LIBRARY)
    list(APPEND MuPDF_PARTS "${MuPDF_${part}_LIBRARY}")
  endif()
  mark_as_advanced(MuPDF_${part}_LIBRARY)
endforeach()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(MuPDF REQUIRED_VARS MuPDF_LIBRARY MuPDF_INCLUDE_DIR MuPDF_harfbuzz_LIBRARY)
if(MuPDF_FOUND AND NOT TARGET MuPDF::MuPDF)
  add_library(MuPDF::MuPDF UNKNOWN IMPORTED)
  set_target_properties(MuPDF::MuPDF PROPERTIES
    IMPORTED_LOCATION "${MuPDF_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${MuPDF_INCLUDE_DIR}"
    INTERFACE_LINK_LIBRARIES "${MuPDF_THIRD_LIBRARY};${MuPDF_PARTS}")
endif()
mark_as_advanced(MuPDF_INCLUDE_DIR MuPDF_LIBRARY MuPDF_THIRD_LIBRARY)
