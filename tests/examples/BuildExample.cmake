# Installs the build, builds examples/hello_report against it, and runs it.
file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed (${rc}): ${ARGN}\n${out}\n${err}")
  endif()
  set(last_output "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${SCRATCH}/prefix)
run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/examples/hello_report -B ${SCRATCH}/build -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${SCRATCH}/prefix -DCMAKE_BUILD_TYPE=Debug)
run(${CMAKE_COMMAND} --build ${SCRATCH}/build)
run(${TRELLIN} demo -o ${SCRATCH}/company.db)
# fontconfig's process-long cache is no leak of ours; a sanitizer build would report it at exit.
run(${CMAKE_COMMAND} -E env "LSAN_OPTIONS=suppressions=${SOURCE_DIR}/tests/examples/lsan.supp"
    ${SCRATCH}/build/hello_report ${SCRATCH}/company.db ${SCRATCH}/types.pdf)
if(NOT last_output MATCHES "CustomerTypeList: [0-9]+ pages")
  message(FATAL_ERROR "unexpected output from hello_report: ${last_output}")
endif()
if(NOT EXISTS ${SCRATCH}/types.pdf)
  message(FATAL_ERROR "hello_report wrote no PDF")
endif()
file(REMOVE_RECURSE ${SCRATCH})
