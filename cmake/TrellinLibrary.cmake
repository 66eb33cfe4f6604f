# trellin_library(<name> [RECURSE] [DEPS <targets>...])
#
# Declares the library of the current folder from every .cpp file in it (with RECURSE, in its
# sub-folders too).
# A folder with no sources yet becomes an INTERFACE library, so that its dependants link already.
# Public headers are included by their path from the repository root: #include "platform/runtime/Currency.h".
function(trellin_library name)
  cmake_parse_arguments(ARG "RECURSE" "" "DEPS" ${ARGN})
  if(ARG_RECURSE)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  else()
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  endif()
  if(sources)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC
      $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:include/trellin>)
    target_link_libraries(${name} PUBLIC ${ARG_DEPS})
    trellin_unity(${name} BATCH ${TRELLIN_LIBRARY_BATCH})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE
      $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:include/trellin>)
    target_link_libraries(${name} INTERFACE ${ARG_DEPS})
  endif()
  add_library(Trellin::${name} ALIAS ${name})
endfunction()

# trellin_test(<name> [TIMEOUT <seconds>] [ONE_PROCESS] [LABEL <label>] DEPS <targets>...)
#
# One GoogleTest binary from every .cpp file in the current test folder; its cases are
# registered with CTest one by one. Every binary links the shared support of tests/support and
# its leak suppressions. Test units carry no path of the checkout (tests/support/TestPaths.h
# gives the data folders), so that ccache serves them from any checkout's build. Each case may
# run for TIMEOUT seconds (300 unless given). With ONE_PROCESS the binary is one CTest test, its
# cases run in one process (they share what it sets up once, such as a server), and TIMEOUT is
# the whole binary's. LABEL labels its tests, to run them alone with ctest -L.
function(trellin_test name)
  cmake_parse_arguments(ARG "ONE_PROCESS" "TIMEOUT;LABEL" "DEPS" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 300)
  endif()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources} ${PROJECT_SOURCE_DIR}/tests/support/LeakSuppressions.cpp)
  target_link_libraries(${name} PRIVATE ${ARG_DEPS} trellin_test_support GTest::gtest GTest::gmock
                        GTest::gtest_main)
  # The test cases themselves are compiled unoptimised under the sanitizers: their units are
  # large and mostly GoogleTest's macros, which -O1 takes 75% longer to compile and hardly
  # speeds up; the code under test keeps its optimisation.
  if(TRELLIN_SANITIZE AND TRELLIN_TESTS_UNOPTIMISED)
    target_compile_options(${name} PRIVATE -O0)
  endif()
  trellin_unity(${name} BATCH ${TRELLIN_TEST_BATCH})
  if(ARG_ONE_PROCESS)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT})
    if(ARG_LABEL)
      set_tests_properties(${name} PROPERTIES LABELS ${ARG_LABEL})
    endif()
  elseif(ARG_LABEL)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${ARG_TIMEOUT} LABELS
                         ${ARG_LABEL})
  else()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${ARG_TIMEOUT})
  endif()
endfunction()
