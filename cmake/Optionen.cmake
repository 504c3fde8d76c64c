# Options and the flags that every target of the project gets.
option(SPURKISTE_FENSTER "Build the window; without it, the command line alone and no Qt" ON)
option(SPURKISTE_PRUEFUNGEN "Build the tests and the fuzz targets" ON)
option(SPURKISTE_MESSUNGEN "Build the benchmarks" OFF)
option(SPURKISTE_STRENG "Take warnings for errors" OFF)
option(SPURKISTE_FUZZ "Build the fuzz targets against libFuzzer (needs clang)" OFF)
if(SPURKISTE_MESSUNGEN AND NOT SPURKISTE_FENSTER)
  message(FATAL_ERROR "The benchmarks measure the window, too: SPURKISTE_MESSUNGEN needs SPURKISTE_FENSTER")
endif()
set(SPURKISTE_SANITIZER "" CACHE STRING "Sanitizers for every target, as in -fsanitize=")

# NDEBUG stays undefined in every configuration: a wrong call is a bug, and assert says so.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -g1")
set(CMAKE_CXX_FLAGS_DEBUG "-O0 -g")

add_library(spurkiste_flags INTERFACE)
target_compile_options(spurkiste_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(SPURKISTE_STRENG)  # for us: next year's compiler finds more to say, and that must not keep anybody from building
  target_compile_options(spurkiste_flags INTERFACE -Werror)
endif()
target_include_directories(spurkiste_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)
if(SPURKISTE_SANITIZER)
  add_compile_options(-fsanitize=${SPURKISTE_SANITIZER} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${SPURKISTE_SANITIZER})
  if(SPURKISTE_SANITIZER MATCHES undefined)
    add_compile_options(-fno-sanitize=vptr)  # needs a file descriptor, and tests leave none
  endif()
endif()
if(SPURKISTE_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

find_program(SPURKISTE_CCACHE ccache)
if(SPURKISTE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${SPURKISTE_CCACHE})
endif()

# spurkiste_bibliothek(name SOURCES ... KENNT ... NUTZT ...): one room of the house.
# KENNT are the rooms that it knows, part of its interface; NUTZT are third-party libraries hidden behind its sources.
function(spurkiste_bibliothek name)
  cmake_parse_arguments(ARG "" "" "SOURCES;KENNT;NUTZT" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC ${ARG_KENNT} PRIVATE spurkiste_flags ${ARG_NUTZT})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
endfunction()

# spurkiste_fensterbibliothek(name ...): the same for a room that sees Qt, which nobody else does: its headers are on no
# other target's include path.
function(spurkiste_fensterbibliothek name)
  spurkiste_bibliothek(${name} ${ARGN})
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  target_compile_definitions(${name} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS)
endfunction()

include(GoogleTest)
# spurkiste_test(name SOURCES ... LINKT ...): one GoogleTest program; every case is a test of its own in ctest. Those that
# link Qt6::Test get an application object and a label: ThreadSanitizer cannot see into Qt and would report races that are
# none.
function(spurkiste_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKT" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE spurkiste_flags ${ARG_LINKT} GTest::gmock GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  set(kennzeichen)
  if(Qt6::Test IN_LIST ARG_LINKT)
    target_sources(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests/hilfe/Fensterprogramm.cpp)
    set(kennzeichen LABELS fenster)
  endif()
  # The cases are asked for when ctest starts, so that a busy machine cannot fail the build by being slow to answer.
  gtest_discover_tests(${name}
    TEST_PREFIX ${name}. DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120
    PROPERTIES ${kennzeichen} TIMEOUT 300 ENVIRONMENT "SPURKISTE_RESSOURCEN=${CMAKE_SOURCE_DIR}/resources")
endfunction()
