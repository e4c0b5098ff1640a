# cmake -DPOSEBENCH=file -DHOME=folder -DSCRIPT=file [-DOPTIONS=a;b] [-DARGS=a;b] [-DEXPECT=code]
#       [-DSTDERR=regex] [-DCONTENT=ON] -P run_e2e.cmake
# Runs a script through posebench in a home made anew. EXPECT: the exit code, 0 unless told, or
# "killed". STDERR: what has to be found there; without it nothing may be written there. CONTENT:
# the home's folders content and data are content directories.
file(REMOVE_RECURSE ${HOME})
if(CONTENT)
  file(MAKE_DIRECTORY ${HOME}/content ${HOME}/data)
  list(APPEND OPTIONS --content ${HOME}/content --content ${HOME}/data)
endif()
if(NOT DEFINED EXPECT)
  set(EXPECT 0)
endif()
execute_process(
  COMMAND ${POSEBENCH} --headless --home ${HOME} ${OPTIONS} --script ${SCRIPT} ${ARGS}
  RESULT_VARIABLE code OUTPUT_VARIABLE out ERROR_VARIABLE err)
message(STATUS "exit ${code}\n${out}${err}")
if(EXPECT STREQUAL "killed")
  if(code MATCHES "^[0-9]+$")
    message(FATAL_ERROR "ended by itself with ${code}, expected to be killed")
  endif()
elseif(NOT code STREQUAL EXPECT)
  message(FATAL_ERROR "ended with ${code}, expected ${EXPECT}")
endif()
if(DEFINED STDERR)
  if(NOT err MATCHES "${STDERR}")
    message(FATAL_ERROR "stderr has no match of '${STDERR}'")
  endif()
elseif(NOT err STREQUAL "")
  message(FATAL_ERROR "something was written to stderr")
endif()
