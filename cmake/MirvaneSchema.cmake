# mirvane_schema(TARGET FILE...): compiles ASN.1 schemas into sources of TARGET. #include "asn1data/NAME.h" gives what
# NAME.asn1 defines. All schemas of a target are compiled in one run, because they refer to each other.
#
# OUTPUT_FOLDER names another folder than ${PROJECT_BINARY_DIR}/generated, for a target with schemas of its own.
function(mirvane_schema target)
  cmake_parse_arguments(SCHEMA "" "OUTPUT_FOLDER" "" ${ARGN})
  if(NOT SCHEMA_OUTPUT_FOLDER)
    set(SCHEMA_OUTPUT_FOLDER ${PROJECT_BINARY_DIR}/generated)
  endif()

  set(schemas)
  set(headers)
  set(sources ${SCHEMA_OUTPUT_FOLDER}/asn1data/type_index.cpp)
  foreach(schema ${SCHEMA_UNPARSED_ARGUMENTS})
    cmake_path(ABSOLUTE_PATH schema BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
    cmake_path(GET schema STEM name)
    list(APPEND schemas ${schema})
    list(APPEND headers ${SCHEMA_OUTPUT_FOLDER}/asn1data/${name}.h)
    list(APPEND sources ${SCHEMA_OUTPUT_FOLDER}/asn1data/${name}.cpp)
  endforeach()

  # The stamp is what is new after a run; files whose content stays the same keep their time, so that a change of one
  # schema rebuilds little.
  set(stamp ${SCHEMA_OUTPUT_FOLDER}/asn1data/generated.stamp)
  add_custom_command(
    OUTPUT ${stamp}
    BYPRODUCTS ${headers} ${sources}
    COMMAND mirvane-asn1gen --out ${SCHEMA_OUTPUT_FOLDER}/asn1data ${schemas}
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS mirvane-asn1gen ${schemas}
    COMMENT "Compiling ASN.1 schemas"
    VERBATIM)
  add_custom_target(${target}-schema DEPENDS ${stamp})
  add_dependencies(${target} ${target}-schema)

  # Records are no standard-layout types; the compilers in use give the offsets of their members all the same.
  set_source_files_properties(${sources} TARGET_DIRECTORY ${target}
                              PROPERTIES GENERATED TRUE COMPILE_OPTIONS -Wno-invalid-offsetof)
  target_sources(${target} PRIVATE ${sources})
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${SCHEMA_OUTPUT_FOLDER}>)
endfunction()
