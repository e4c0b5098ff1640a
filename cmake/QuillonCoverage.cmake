# Target coverage: runs every test and writes <build>/coverage/index.html, with a summary on the
# terminal. Counts the plug-in and the stand-in; tests themselves are left out.
find_program(QUILLON_GCOVR gcovr)
if(NOT QUILLON_GCOVR)
  add_custom_target(coverage
    COMMAND ${CMAKE_COMMAND} -E echo "The target coverage needs gcovr: apt-get install gcovr"
    COMMAND ${CMAKE_COMMAND} -E false VERBATIM)
  return()
endif()
include(ProcessorCount)
ProcessorCount(cores)
set(report ${CMAKE_BINARY_DIR}/coverage)
add_custom_target(coverage
  COMMAND find ${CMAKE_BINARY_DIR} -name "*.gcda" -delete
  COMMAND ${CMAKE_CTEST_COMMAND} --test-dir ${CMAKE_BINARY_DIR} --output-on-failure --parallel ${cores}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${report}
  COMMAND ${QUILLON_GCOVR} --root ${CMAKE_SOURCE_DIR} --object-directory ${CMAKE_BINARY_DIR}
    --filter "(plugin|pane|services|finder|posefile|figure|host)/"
    --exclude-unreachable-branches --exclude-throw-branches
    --html-details ${report}/index.html --print-summary
  WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} USES_TERMINAL VERBATIM)
