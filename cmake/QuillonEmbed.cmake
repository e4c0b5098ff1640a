# quillon_embed(target symbol file): adds a source file that defines
#   extern const unsigned char <symbol>[]; extern const int <symbol>Size;
# in namespace quillon, holding the bytes of the file.
function(quillon_embed target symbol file)
  get_filename_component(_abs ${file} ABSOLUTE)
  set(_gen ${CMAKE_CURRENT_BINARY_DIR}/embed_${symbol}.cpp)
  add_custom_command(OUTPUT ${_gen}
    COMMAND ${CMAKE_COMMAND} -DIN=${_abs} -DOUT=${_gen} -DSYMBOL=${symbol}
            -P ${CMAKE_SOURCE_DIR}/cmake/embed_file.cmake
    DEPENDS ${_abs} ${CMAKE_SOURCE_DIR}/cmake/embed_file.cmake
    COMMENT "embed ${symbol}" VERBATIM)
  target_sources(${target} PRIVATE ${_gen})
endfunction()
