# quillon_room(name [file...] [MOC header...] [EMBED symbol file ...] [ON library...]): the static
# library quillon_<name> of a folder's files. ON: the room below, and what else it needs; so the
# linker refuses a call upwards. MOC headers are listed there only; EMBED takes pairs. With
# QUILLON_ROOMS_SHARED it is a shared library: another one in its place, and every test program runs
# other code without being linked anew.
function(quillon_room name)
  cmake_parse_arguments(R "" "" "MOC;EMBED;ON" ${ARGN})
  set(target quillon_${name})
  set(kind STATIC)
  if(QUILLON_ROOMS_SHARED)
    set(kind SHARED)
  endif()
  add_library(${target} ${kind} ${R_UNPARSED_ARGUMENTS})
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${target} PUBLIC ${R_ON} quillon_sdk)
  # GCC 12 takes an empty QByteArray's shared data for an object without text behind it.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-stringop-overread>)
  if(QUILLON_ROOMS_SHARED)
    set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET default VISIBILITY_INLINES_HIDDEN OFF)
  endif()
  quillon_moc(${target} ${R_MOC})
  while(R_EMBED)
    list(POP_FRONT R_EMBED symbol file)
    quillon_embed(${target} ${symbol} ${file})
  endwhile()
endfunction()
