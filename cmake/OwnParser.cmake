# Release programs bring the parser along. Most of the time of a small bake was the loading of the shared parser and of the
# Unicode library behind it, 30 MB of tables that hardly a document needs. What few runs need is loaded when it is
# called (Libraries/LateLibraries): the Unicode library's converters, and the stylesheet processor, which the program
# offers its own parser so that there is one of it. Where an archive is missing the programs link the shared libraries;
# so do tests and the other kinds of build.
#
# XmlLibraries is what a library or program links that uses the parser or the processor.
set(RIGBAKE_OWN_PARSER OFF)

# The names in the dynamic tables of shared libraries, without their versions.
function(rigbake_dynamic_names result which)
  execute_process(COMMAND ${CMAKE_NM} -D ${which} ${ARGN} OUTPUT_VARIABLE listing ERROR_QUIET)
  string(REGEX MATCHALL " [A-Za-z] [A-Za-z0-9_]+" names "${listing}")
  list(TRANSFORM names REPLACE "^ . " "")
  list(REMOVE_DUPLICATES names)
  set(${result} ${names} PARENT_SCOPE)
endfunction()

if(CMAKE_BUILD_TYPE STREQUAL "Release" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32
   AND NOT CMAKE_CROSSCOMPILING AND NOT RIGBAKE_STATIC AND NOT RIGBAKE_SANITIZE
   AND LIBXML2_LIBRARY MATCHES "\\.so$" AND LIBXSLT_LIBRARY MATCHES "\\.so$")
  get_filename_component(folder ${LIBXML2_LIBRARY} DIRECTORY)
  set(archives "")
  foreach(name xml2 z lzma)
    find_library(RIGBAKE_ARCHIVE_${name} lib${name}.a HINTS ${folder})
    list(APPEND archives ${RIGBAKE_ARCHIVE_${name}})
  endforeach()
  find_path(RIGBAKE_UNICODE_INCLUDE unicode/ucnv.h)
  # What the processor and its extensions want of the parser.
  rigbake_dynamic_names(held --defined-only ${LIBXML2_LIBRARY})
  rigbake_dynamic_names(names --undefined-only ${LIBXSLT_LIBRARY} ${LIBXSLT_EXSLT_LIBRARY})
  set(wanted "")
  foreach(name IN LISTS names)
    if(name IN_LIST held)
      list(APPEND wanted ${name})
    endif()
  endforeach()
  if(wanted AND RIGBAKE_UNICODE_INCLUDE AND NOT "${archives}" MATCHES "NOTFOUND")
    set(RIGBAKE_OWN_PARSER ON)
  endif()
endif()

set(shared LibXslt::LibXslt LibXml2::LibXml2)
add_library(XmlLibraries INTERFACE)
if(NOT RIGBAKE_OWN_PARSER)
  target_link_libraries(XmlLibraries INTERFACE ${shared})
  return()
endif()

list(JOIN wanted " " names)
file(WRITE ${PROJECT_BINARY_DIR}/generated/parser-wanted.ld "EXTERN(${names})\n")
list(JOIN wanted "; " names)
file(WRITE ${PROJECT_BINARY_DIR}/generated/parser-offered.ld "{ ${names}; };\n")
set(brings $<BOOL:$<TARGET_PROPERTY:RIGBAKE_BRINGS_PARSER>>)
set(own ${PROJECT_BINARY_DIR}/generated/parser-wanted.ld ${archives} m)
target_include_directories(XmlLibraries SYSTEM INTERFACE ${LIBXML2_INCLUDE_DIR} ${LIBXSLT_INCLUDE_DIR})
target_link_libraries(XmlLibraries INTERFACE "$<IF:${brings},${own},${shared}>")

file(REAL_PATH ${LIBXSLT_LIBRARY} processor)
string(REGEX REPLACE "^.*/(libxslt\\.so\\.[0-9]+).*$" "\\1" processor ${processor})
rigbake_sources(sources Libraries/LateLibraries)
add_library(LateLibraries OBJECT ${sources})
target_link_libraries(LateLibraries PRIVATE RigbakeOptions Platform QelTools XmlLibraries)
target_include_directories(LateLibraries PRIVATE ${PROJECT_SOURCE_DIR}/Libraries/LateLibraries)
target_include_directories(LateLibraries SYSTEM PRIVATE ${RIGBAKE_UNICODE_INCLUDE})
target_compile_definitions(LateLibraries PRIVATE RIGBAKE_XSLT_LIBRARY="${processor}")

function(rigbake_bring_parser program)
  set_target_properties(${program} PROPERTIES RIGBAKE_BRINGS_PARSER ON)
  target_sources(${program} PRIVATE $<TARGET_OBJECTS:LateLibraries>)
  target_link_libraries(${program} PRIVATE Platform QelTools)
  target_link_options(${program} PRIVATE
    LINKER:--dynamic-list=${PROJECT_BINARY_DIR}/generated/parser-offered.ld)
endfunction()
