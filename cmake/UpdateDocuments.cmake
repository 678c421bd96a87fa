# Compiles the documents of the format update into a library. Each becomes a text under its URI, sorted by URI; what
# a stylesheet includes is put in its place, so that no text needs another one at run time.
#
# Run with -P it writes the source: DOCUMENTS is the folder, URI_ROOT what its URIs begin with, OUTPUT the source.
# Included it gives rigbake_update_documents(target folder uri-root).

# Replaces the includes of `text` by what stands between the tags of the included stylesheets.
function(inline_shared_parts result folder text)
  set(include "<xsl:include href=\"([^\"]+)\"/>")
  while(text MATCHES "${include}")
    set(element "${CMAKE_MATCH_0}")
    file(READ "${folder}/${CMAKE_MATCH_1}" part)
    string(FIND "${part}" "<xsl:stylesheet" start)
    string(SUBSTRING "${part}" ${start} -1 part)
    string(FIND "${part}" ">" start)
    math(EXPR start "${start} + 1")
    string(FIND "${part}" "</xsl:stylesheet>" end REVERSE)
    math(EXPR length "${end} - ${start}")
    string(SUBSTRING "${part}" ${start} ${length} part)
    string(STRIP "${part}" part)
    string(REPLACE "${element}" "${part}" text "${text}")
  endwhile()
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

function(write_update_documents)
  file(GLOB_RECURSE names RELATIVE "${DOCUMENTS}" "${DOCUMENTS}/*.xslt" "${DOCUMENTS}/*.xml")
  list(FILTER names EXCLUDE REGEX "^Shared/")
  list(SORT names COMPARE STRING)
  set(uris "")
  set(texts "")
  foreach(name IN LISTS names)
    file(READ "${DOCUMENTS}/${name}" text)
    get_filename_component(folder "${DOCUMENTS}/${name}" DIRECTORY)
    inline_shared_parts(text "${folder}" "${text}")
    string(APPEND uris "    \"${URI_ROOT}${name}\",\n")
    string(APPEND texts "    R\"qel(${text})qel\",\n")
  endforeach()
  file(WRITE "${OUTPUT}"
    "#include \"Update/EmbeddedDocuments.h\"\n\n"
    "const char* const kEmbeddedUris[] = {\n${uris}    nullptr,\n};\n\n"
    "const char* const kEmbeddedTexts[] = {\n${texts}    nullptr,\n};\n")
endfunction()

function(rigbake_update_documents target folder uri_root)
  set(documents "${PROJECT_SOURCE_DIR}/${folder}")
  set(script "${PROJECT_SOURCE_DIR}/cmake/UpdateDocuments.cmake")
  set(source "${PROJECT_BINARY_DIR}/generated/EmbeddedDocuments.cpp")
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${documents}/*.xslt" "${documents}/*.xml")
  add_custom_command(OUTPUT "${source}"
    COMMAND ${CMAKE_COMMAND} "-DDOCUMENTS=${documents}" "-DURI_ROOT=${uri_root}" "-DOUTPUT=${source}" -P "${script}"
    DEPENDS "${script}" ${sources}
    COMMENT "Embedding the documents of the format update"
    VERBATIM)
  target_sources(${target} PRIVATE "${source}")
endfunction()

if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  write_update_documents()
endif()
