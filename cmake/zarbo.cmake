# Flags of every target of the project, and the few functions with which rooms declare targets.

option(ZARBO_WERROR "Treat warnings of the compiler as errors; the presets switch it on" OFF)

add_library(zarbo_flags INTERFACE)
target_compile_options(zarbo_flags INTERFACE -Wall -Wextra $<$<BOOL:${ZARBO_WERROR}>:-Werror>)
# g++ 12 warns falsely of overlap where a text is added to a literal (its bug 105651).
target_compile_options(zarbo_flags INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
# A library's calls of its own functions are bound when it is linked, which halves what a start looks up by name.
target_link_options(zarbo_flags INTERFACE -Wl,-Bsymbolic-functions)
target_include_directories(zarbo_flags INTERFACE ${CMAKE_SOURCE_DIR})
if(ZARBO_SANITIZE)
  # Instrumented code makes the compiler's flow warnings guess; the plain build is the one that must be clean.
  target_compile_options(zarbo_flags INTERFACE -Wno-error)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
link_libraries(zarbo_flags)

# The set of sources that calls the operating system stands in a folder of its own beside what needs none.
set(ZARBO_SYSTEM posix)
if(WIN32)
  set(ZARBO_SYSTEM windows)
endif()

# zarbo_room(NAME OBJECT|STATIC|SHARED|PROGRAM [EXCEPT file …]): a target of all sources of the folder and its set for
# the operating system, those of other subfolders apart.
function(zarbo_room name type)
  cmake_parse_arguments(arg "" "" "EXCEPT" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.cpp ${ZARBO_SYSTEM}/*.cpp)
  if(arg_EXCEPT)
    list(REMOVE_ITEM sources ${arg_EXCEPT})
  endif()
  if(type STREQUAL PROGRAM)
    add_executable(${name} ${sources})
  else()
    add_library(${name} ${type} ${sources})
  endif()
endfunction()

# zarbo_host_user(NAME): the program has a host from the beginning.
function(zarbo_host_user name)
  target_sources(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests/support/host_of_program.cpp)
  target_link_libraries(${name} PRIVATE zarbo_host_core)
endfunction()

# zarbo_test(NAME SOURCES … LIBS … [TIMEOUT seconds]): one GoogleTest program, one entry for CTest.
function(zarbo_test name)
  cmake_parse_arguments(arg "" "TIMEOUT" "SOURCES;LIBS" ${ARGN})
  find_package(GTest REQUIRED)
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LIBS} GTest::gtest GTest::gmock GTest::gtest_main)
  if(zarbo_host_core IN_LIST arg_LIBS)
    zarbo_host_user(${name})
  endif()
  add_test(NAME ${name} COMMAND ${name})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 900)
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT})
endfunction()

# zarbo_bench(NAME SOURCES … LIBS …): one Google Benchmark program; not run by CTest.
function(zarbo_bench name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBS" ${ARGN})
  find_package(benchmark REQUIRED)
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LIBS} benchmark::benchmark)
  if(zarbo_host_core IN_LIST arg_LIBS)
    zarbo_host_user(${name})
  endif()
endfunction()

if(ZARBO_FUZZ)
  add_custom_target(fuzzers)
endif()

# zarbo_fuzz(NAME SOURCES … LIBS …): one libFuzzer program, built only by the fuzz preset.
# SOURCES are compiled with coverage, so list the code under test itself, not a library of it.
function(zarbo_fuzz name)
  if(NOT ZARBO_FUZZ)
    return()
  endif()
  cmake_parse_arguments(arg "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_compile_options(${name} PRIVATE -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer,address,undefined)
  target_link_libraries(${name} PRIVATE ${arg_LIBS})
  add_dependencies(fuzzers ${name})
endfunction()
