# cpack_generators.cmake - what differs between the kinds of packages; read by cpack for each.
if(CPACK_GENERATOR STREQUAL "DEB")
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr/lib/quillon)
  set(CPACK_PRE_BUILD_SCRIPTS ${CPACK_QUILLON_PACKAGING}/debian/arrange.cmake)
endif()
