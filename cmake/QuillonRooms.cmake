# quillon_count_branches(target): in a tree for coverage only those branches are made that the source
# has: none for exceptions, which the plug-in neither throws nor catches, for the guards of static
# values, and for assertions.
function(quillon_count_branches target)
  if(QUILLON_COVERAGE)
    target_compile_options(${target} PRIVATE -fno-exceptions -fno-threadsafe-statics)
    target_compile_definitions(${target} PRIVATE QT_NO_DEBUG)
  endif()
endfunction()

# quillon_room(name [file...] [MOC header...] [EMBED symbol file ...] [ON library...]): the static
# library quillon_<name> of a folder's files. ON: the room below, and what else it needs; so the
# linker refuses a call upwards. MOC headers are listed there only; EMBED takes pairs. With
# QUILLON_ROOMS_SHARED it is a shared library: another one in its place, and every test program runs
# other code without being linked anew. The module has the objects (QUILLON_ROOM_OBJECTS) then, as it
# has without: what the plug-in calls is told by the file that the call comes from.
function(quillon_room name)
  cmake_parse_arguments(R "" "" "MOC;EMBED;ON" ${ARGN})
  set(target quillon_${name})
  set(objects ${target})
  if(QUILLON_ROOMS_SHARED)
    set(objects ${target}_objects)
    add_library(${objects} OBJECT ${R_UNPARSED_ARGUMENTS})
    set_target_properties(${objects} PROPERTIES CXX_VISIBILITY_PRESET default VISIBILITY_INLINES_HIDDEN OFF)
    set_property(GLOBAL APPEND PROPERTY QUILLON_ROOM_OBJECTS $<TARGET_OBJECTS:${objects}>)
    add_library(${target} SHARED $<TARGET_OBJECTS:${objects}>)
    target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR})
    target_link_libraries(${target} PUBLIC ${R_ON} quillon_sdk)
  else()
    add_library(${target} STATIC ${R_UNPARSED_ARGUMENTS})
  endif()
  target_include_directories(${objects} PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${objects} PUBLIC ${R_ON} quillon_sdk)
  # GCC 12 takes an empty QByteArray's shared data for an object without text behind it.
  target_compile_options(${objects} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-stringop-overread>)
  quillon_count_branches(${objects})
  quillon_moc(${objects} ${R_MOC})
  while(R_EMBED)
    list(POP_FRONT R_EMBED symbol file)
    quillon_embed(${objects} ${symbol} ${file})
  endwhile()
endfunction()
