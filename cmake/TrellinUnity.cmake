# trellin_unity(<target> BATCH <n>)
#
# Compiles the target's .cpp files n at a time: each batch is one generated unit that includes
# its files by their path from the repository root. The headers every file of a library or test
# folder shares (the standard library, GoogleTest, the boundary interfaces) are then parsed and
# their templates compiled once per batch instead of once per file, which is most of a sanitizer
# build's time. CMake's own unity build writes absolute paths into its units, so that no two
# checkouts share a ccache entry; these units read the same in every checkout.
#
# A unit's files share one translation unit: names in anonymous namespaces must not collide
# across the files of one folder. A file whose helpers do collide, and that its folder would
# rather not rename, is marked with the source property SKIP_UNITY_BUILD_INCLUSION before the
# target is declared and compiles on its own; so do generated files. Off with
# -DTRELLIN_UNITY_BUILD=OFF.
option(TRELLIN_UNITY_BUILD "Compile libraries and tests in batches of files" ON)

function(trellin_unity target)
  cmake_parse_arguments(ARG "" "BATCH" "" ${ARGN})
  if(NOT TRELLIN_UNITY_BUILD)
    return()
  endif()
  get_target_property(sources ${target} SOURCES)
  get_target_property(source_dir ${target} SOURCE_DIR)
  set(batchable)
  foreach(source ${sources})
    if(NOT IS_ABSOLUTE ${source})
      set(source ${source_dir}/${source})
    endif()
    get_source_file_property(skip ${source} SKIP_UNITY_BUILD_INCLUSION)
    if(source MATCHES "\\.cpp$" AND source MATCHES "^${PROJECT_SOURCE_DIR}/"
       AND NOT source MATCHES "^${PROJECT_BINARY_DIR}/" AND NOT skip)
      list(APPEND batchable ${source})
    endif()
  endforeach()
  list(LENGTH batchable count)
  if(count LESS 2)
    return()
  endif()
  list(SORT batchable)
  set(index 0)
  set(batch 0)
  set(content "")
  set(units)
  foreach(source ${batchable})
    file(RELATIVE_PATH relative ${PROJECT_SOURCE_DIR} ${source})
    string(APPEND content "#include \"${relative}\"\n")
    math(EXPR index "${index} + 1")
    math(EXPR left "${index} % ${ARG_BATCH}")
    if(left EQUAL 0 OR index EQUAL count)
      set(unit ${CMAKE_CURRENT_BINARY_DIR}/${target}_unity_${batch}.cpp)
      file(CONFIGURE OUTPUT ${unit} CONTENT "// Generated: one batch of ${target}.\n${content}")
      list(APPEND units ${unit})
      set(content "")
      math(EXPR batch "${batch} + 1")
    endif()
  endforeach()
  set_source_files_properties(${batchable} TARGET_DIRECTORY ${target} PROPERTIES HEADER_FILE_ONLY ON)
  target_sources(${target} PRIVATE ${units})
endfunction()
