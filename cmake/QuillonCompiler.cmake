# Flags that every target of this build shares. Warnings are errors on Linux.
find_program(QUILLON_CCACHE ccache)
if(QUILLON_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # What uses a precompiled header is kept only if told so. By the list of headers that the compiler
  # writes anyway it is known what a file reads: without, each new one is preprocessed once more.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    env CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_DEPEND=1 ${QUILLON_CCACHE})
endif()

if(MSVC)
  # The real host's libraries exist as release builds only, and Qt 4.8 uses constructs that
  # /permissive- refuses.
  set(CMAKE_MSVC_RUNTIME_LIBRARY MultiThreadedDLL)
  # Left out: 4127 conditions that Qt's macros make constant, 4190 a class given by a C function,
  # 4244 and 4267 numbers made narrower, which GCC's warnings look at, 4251 and 4275 bases and members
  # from the host's libraries, 4996 functions with a "safe" namesake of that compiler.
  add_compile_options(/W4 /wd4127 /wd4190 /wd4244 /wd4267 /wd4251 /wd4275 /wd4996 /utf-8)
  add_compile_definitions(_CRT_SECURE_NO_DEPRECATE NOMINMAX)
else()
  set(CMAKE_CXX_FLAGS_RELEASE "-O2")
  set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O1 -g1 -fno-omit-frame-pointer")
  add_compile_options(-Wall -Wextra -Wnon-virtual-dtor -Woverloaded-virtual)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wshadow=local)
  else() # the host asks a C function for a class
    add_compile_options(-Wno-return-type-c-linkage)
  endif()
  if(QUILLON_WERROR)
    add_compile_options(-Werror)
  endif()
  if(QUILLON_SANITIZE)
    add_compile_options(-fsanitize=${QUILLON_SANITIZE} -fno-sanitize-recover=all)
    # vptr checks need type information across libraries that hide their symbols
    if(QUILLON_SANITIZE MATCHES "undefined")
      add_compile_options(-fno-sanitize=vptr)
    endif()
    add_link_options(-fsanitize=${QUILLON_SANITIZE})
  endif()
  if(QUILLON_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
      message(FATAL_ERROR "QUILLON_FUZZ needs clang, which has libFuzzer")
    endif()
    add_compile_options(-fsanitize=fuzzer-no-link)
  endif()
  if(QUILLON_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
  endif()
endif()

add_compile_definitions($<$<BOOL:${QUILLON_ASSERTS}>:QT_FORCE_ASSERTS>)

# quillon_merge_sources(target): compiles eight sources at a time as one, so that the toolkit's
# headers are read once for them. For the stand-in host, which changes seldom.
function(quillon_merge_sources target)
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
endfunction()
