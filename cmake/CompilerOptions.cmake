# Flags that every target shares. The arithmetic flags are part of the file format: contraction or wider
# registers would change bytes.
add_library(RigbakeOptions INTERFACE)

if(MSVC)
  target_compile_options(RigbakeOptions INTERFACE /W4 /fp:precise /EHsc /utf-8)
  target_compile_definitions(RigbakeOptions INTERFACE _CRT_SECURE_NO_WARNINGS)
else()
  target_compile_options(RigbakeOptions INTERFACE
    -ffp-contract=off -fno-fast-math
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
    -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 warns of overlapping copies inside its own std::string (bug 105651).
    target_compile_options(RigbakeOptions INTERFACE -Wno-restrict)
    if(RIGBAKE_SANITIZE)
      # Instrumented code hides from GCC what is initialised.
      target_compile_options(RigbakeOptions INTERFACE -Wno-maybe-uninitialized)
    endif()
  endif()
  if(RIGBAKE_WERROR)
    target_compile_options(RigbakeOptions INTERFACE -Werror)
  endif()
endif()
if(WIN32)
  target_compile_definitions(RigbakeOptions INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601)
endif()

if(RIGBAKE_SANITIZE)
  target_compile_options(RigbakeOptions INTERFACE
    -fsanitize=${RIGBAKE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
    # This check probes memory through a pipe of its own and raises false alarms where a test takes
    # the process its descriptors away.
    -fno-sanitize=vptr)
  target_link_options(RigbakeOptions INTERFACE -fsanitize=${RIGBAKE_SANITIZE})
endif()
if(RIGBAKE_STATIC)
  target_link_options(RigbakeOptions INTERFACE -static)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()
