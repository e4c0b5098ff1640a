# quillon_sdk: what the plug-in compiles and links against. Headers are named "dznode.h" in both
# cases, so no source file knows which of the two it sees.
add_library(quillon_sdk INTERFACE)
target_link_libraries(quillon_sdk INTERFACE quillon_qt_core quillon_qt_gui quillon_qt_script quillon_qt_network)
if(QUILLON_DZSDK_NEEDED AND NOT QUILLON_DZSDK) # the preset sdk never means the stand-in
  message(FATAL_ERROR "Set QUILLON_DZSDK, in the environment or with -D, to the folder of the host's SDK")
endif()
if(QUILLON_DZSDK)
  foreach(needed include/dzplugin.h lib/x64/dzcore.lib)
    if(NOT EXISTS ${QUILLON_DZSDK}/${needed})
      message(FATAL_ERROR "QUILLON_DZSDK: ${QUILLON_DZSDK} has no ${needed}")
    endif()
  endforeach()
  target_include_directories(quillon_sdk SYSTEM INTERFACE ${QUILLON_DZSDK}/include)
  target_link_libraries(quillon_sdk INTERFACE ${QUILLON_DZSDK}/lib/x64/dzcore.lib)
else()
  target_link_libraries(quillon_sdk INTERFACE dzcore)
endif()

# How gzip is read and written, ground/host_gzip.h. No public source shows the SDK's header of its gzip
# device: where there is none, zlib does it.
set(QUILLON_GZIP_BY ${QUILLON_GZIP})
if(QUILLON_GZIP STREQUAL "auto")
  set(QUILLON_GZIP_BY device)
  if(QUILLON_DZSDK AND NOT EXISTS ${QUILLON_DZSDK}/include/dzgzio.h)
    set(QUILLON_GZIP_BY zlib)
  endif()
elseif(NOT QUILLON_GZIP MATCHES "^(device|zlib)$")
  message(FATAL_ERROR "QUILLON_GZIP must be auto, device or zlib, not '${QUILLON_GZIP}'")
endif()
if(WIN32)
  set(ZLIB_USE_STATIC_LIBS ON) # the host has no zlib to share
endif()
find_package(ZLIB)
if(QUILLON_GZIP_BY STREQUAL "zlib" AND NOT ZLIB_FOUND)
  message(FATAL_ERROR "The SDK has no dzgzio.h, so zlib is needed: set ZLIB_INCLUDE_DIR to the folder of"
    " zlib.h and ZLIB_LIBRARY to a static library of it")
endif()
