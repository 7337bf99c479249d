# mirvane_public_headers(TARGET BASE_FOLDER FILE...): what TARGET offers to other programs, installed and from the build
# tree alike, as #include <mirvane/FILE>. A FILE is relative to BASE_FOLDER.
#
# In the source tree a header names another one as "base/blob.h". The copies say "mirvane/base/blob.h", so that one
# folder on the include path serves and no name meets a file of the program that uses the library.
function(mirvane_public_headers target base)
  set(folder ${PROJECT_BINARY_DIR}/include)
  list(TRANSFORM ARGN PREPEND ${base}/ OUTPUT_VARIABLE sources)
  list(TRANSFORM ARGN PREPEND ${folder}/mirvane/ OUTPUT_VARIABLE copies)
  set(stamp ${CMAKE_CURRENT_BINARY_DIR}/${target}-headers.stamp)
  add_custom_command(
    OUTPUT ${stamp}
    BYPRODUCTS ${copies}
    COMMAND ${CMAKE_COMMAND} -D "FROM=${base}" -D "TO=${folder}/mirvane" -D "FILES=${ARGN}"
            -P ${PROJECT_SOURCE_DIR}/cmake/PublishHeaders.cmake
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${sources} ${PROJECT_SOURCE_DIR}/cmake/PublishHeaders.cmake
    COMMENT "Publishing the headers of ${target}"
    VERBATIM)
  add_custom_target(${target}-headers ALL DEPENDS ${stamp})
  add_dependencies(${target} ${target}-headers)
  target_sources(${target} INTERFACE FILE_SET HEADERS BASE_DIRS ${folder} FILES ${copies})
endfunction()
