# Every library sees the public headers of the libraries that it names, and no others: each gets an include folder of
# its own in the build tree that holds a link to its public headers and nothing else. USES PUBLIC names what its own
# public headers include, which its users therefore see too; USES PRIVATE what only its sources include.

# A source that calls the operating system ends in _posix or _win32; the other platform's sources are left out.
function(rigbake_sources result folder)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
  if(WIN32)
    list(FILTER sources EXCLUDE REGEX "_posix\\.cpp$")
  else()
    list(FILTER sources EXCLUDE REGEX "_win32\\.cpp$")
  endif()
  # A shared library that few runs need is loaded by those; an archive is linked.
  if(RIGBAKE_EXSLT_LIBRARY)
    list(FILTER sources EXCLUDE REGEX "ExsltMath_linked\\.cpp$")
  else()
    list(FILTER sources EXCLUDE REGEX "ExsltMath_loaded\\.cpp$")
  endif()
  set(${result} ${sources} PARENT_SCOPE)
endfunction()

function(rigbake_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "USES")
  cmake_parse_arguments(uses "" "" "PUBLIC;PRIVATE" ${arg_USES})
  if(uses_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "${name}: say PUBLIC or PRIVATE in front of ${uses_UNPARSED_ARGUMENTS}")
  endif()
  rigbake_sources(sources Libraries/${name})
  set(view ${PROJECT_BINARY_DIR}/include/${name})
  file(MAKE_DIRECTORY ${view})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/Libraries/Include/${name} ${view}/${name} SYMBOLIC)
  if(sources)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${view} PRIVATE ${PROJECT_SOURCE_DIR}/Libraries/${name})
    target_link_libraries(${name} PUBLIC RigbakeOptions ${uses_PUBLIC} PRIVATE ${uses_PRIVATE})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${view})
    target_link_libraries(${name} INTERFACE RigbakeOptions ${uses_PUBLIC})
  endif()
endfunction()

# All programs, without their tests.
add_custom_target(programs)

# What makes names of files UTF-8 where a program has to ask for that. An object of its own, for the resource compiler
# knows none of the other flags.
set(manifest ${PROJECT_SOURCE_DIR}/Libraries/Platform/Utf8Names_win32.manifest)
if(WIN32 AND NOT MSVC)
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/generated/Utf8Names.rc CONTENT "1 24 \"${manifest}\"\n")
  add_library(Utf8Names OBJECT ${PROJECT_BINARY_DIR}/generated/Utf8Names.rc)
  set_source_files_properties(${PROJECT_BINARY_DIR}/generated/Utf8Names.rc PROPERTIES OBJECT_DEPENDS ${manifest})
else()
  add_library(Utf8Names INTERFACE)
  if(MSVC)
    target_sources(Utf8Names INTERFACE ${manifest})
  endif()
endif()

function(rigbake_program name folder)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "USES")
  rigbake_sources(sources ${folder})
  if(sources)
    add_executable(${name} ${sources})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/${folder})
    target_link_libraries(${name} PRIVATE RigbakeOptions Utf8Names ${arg_USES})
    # Binding some thousand names of the C++ library at each start takes longer than a small bake. The program's copy is
    # its own: offered to the shared libraries, it would be looked through for each of their names.
    if(CMAKE_BUILD_TYPE STREQUAL "Release" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
      target_link_options(${name} PRIVATE -static-libstdc++ -static-libgcc
        LINKER:--exclude-libs,libstdc++.a:libgcc.a:libgcc_eh.a)
    endif()
    if(RIGBAKE_OWN_PARSER AND VokLib IN_LIST arg_USES)
      rigbake_bring_parser(${name})
    endif()
    add_dependencies(programs ${name})
  endif()
endfunction()

# A program whose commands are also a library, name + Commands, for tests and fuzzers.
function(rigbake_program_with_library name folder)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "USES")
  rigbake_sources(sources ${folder})
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  add_library(${name}Commands STATIC ${sources})
  target_include_directories(${name}Commands PUBLIC ${PROJECT_SOURCE_DIR}/${folder})
  target_link_libraries(${name}Commands PUBLIC RigbakeOptions ${arg_USES})
  add_executable(${name} ${folder}/main.cpp)
  target_link_libraries(${name} PRIVATE Utf8Names ${name}Commands)
  add_dependencies(programs ${name})
endfunction()

# Compiles a page into a library as kPageTemplate. Literals of a few thousand characters are what every compiler takes.
function(rigbake_page target file)
  set(page ${PROJECT_SOURCE_DIR}/${file})
  set(source ${PROJECT_BINARY_DIR}/generated/PageTemplate.cpp)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${page})
  file(READ ${page} text)
  string(LENGTH "${text}" length)
  set(literals "")
  foreach(at RANGE 0 ${length} 4000)
    string(SUBSTRING "${text}" ${at} 4000 part)
    string(APPEND literals "\n    R\"page(${part})page\"")
  endforeach()
  file(GENERATE OUTPUT ${source} CONTENT
    "#include \"PageTemplate.h\"\n\nconst char* const kPageTemplate =${literals};\n")
  target_sources(${target} PRIVATE ${source})
endfunction()
