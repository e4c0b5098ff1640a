# arrange.cmake - moves what was installed for a package to where Debian has it. Run by cpack before it packs; the
# program itself stays a tree that finds its parts beside it, below /usr/lib/quillon.
cmake_minimum_required(VERSION 3.21)
set(root "${CPACK_TEMPORARY_DIRECTORY}")
set(tree "${root}/usr/lib/quillon")
set(debian "${CMAKE_CURRENT_LIST_DIR}")

file(MAKE_DIRECTORY ${root}/usr/bin)
file(RENAME ${tree}/share ${root}/usr/share)
file(CREATE_LINK ../../share ${tree}/share SYMBOLIC) # figures and guide, from the tree
file(COPY_FILE ${debian}/posebench.sh ${root}/usr/bin/posebench)
file(GLOB programs RELATIVE ${tree}/bin ${tree}/bin/*)
list(REMOVE_ITEM programs posebench)
foreach(program ${programs})
  file(CREATE_LINK ../lib/quillon/bin/${program} ${root}/usr/bin/${program} SYMBOLIC)
endforeach()

file(COPY_FILE ${debian}/copyright ${root}/usr/share/doc/quillon/copyright)
file(COPY_FILE ${debian}/changelog ${root}/usr/share/doc/quillon/changelog)
file(GLOB pages ${root}/usr/share/man/man1/*.1)
execute_process(COMMAND gzip -9n ${pages} ${root}/usr/share/doc/quillon/changelog COMMAND_ERROR_IS_FATAL ANY)

# Whatever the sources' modes were.
file(GLOB_RECURSE files LIST_DIRECTORIES false ${root}/usr/share/* ${tree}/lib/* ${tree}/plugins/*)
foreach(file ${files})
  if(NOT IS_SYMLINK ${file})
    file(CHMOD ${file} FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  endif()
endforeach()
file(GLOB_RECURSE folders LIST_DIRECTORIES true ${root}/usr/*)
foreach(folder ${folders})
  if(IS_DIRECTORY ${folder} AND NOT IS_SYMLINK ${folder})
    file(CHMOD ${folder} DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
      GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE
      FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  endif()
endforeach()
file(CHMOD ${root}/usr/bin/posebench FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
  GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
