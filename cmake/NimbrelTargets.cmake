# The kinds of targets that the project consists of.

include(GoogleTest)

# nimbrel_precompile(TARGET HEADER…)
# Reads the headers that most files of a target include once for all of them, which is most of the time that it takes to
# compile them. clang-tidy goes without, so that each file is still seen to include what it needs.
function(nimbrel_precompile target)
  list(TRANSFORM ARGN REPLACE "(.+)" "<\\1>" OUTPUT_VARIABLE headers)
  target_precompile_headers(${target} PRIVATE ${headers})
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(${target} PRIVATE
      # What ccache wants to see.
      -fpch-preprocess
      # g++ 12 reports what it inlines of std::string as out of bounds where it does not know that for the system's.
      -Wno-array-bounds -Wno-stringop-overflow)
  endif()
endfunction()

# nimbrel_room(NAME SOURCES … HEADERS … [LINK …] [PRIVATE_LINK …] [PRECOMPILE …] [MOC])
# A static library for the folder it is called in. Headers are included as "Room/Header.h". Those without a source file
# of their own, which would include them first, are compiled by themselves as part of all_verify_interface_header_sets.
function(nimbrel_room name)
  cmake_parse_arguments(ROOM "MOC" "" "SOURCES;HEADERS;LINK;PRIVATE_LINK;PRECOMPILE" ${ARGN})
  add_library(${name} STATIC ${ROOM_SOURCES})
  list(TRANSFORM ROOM_SOURCES REPLACE "\\.cpp$" ".h" OUTPUT_VARIABLE seen)
  set(alone ${ROOM_HEADERS})
  list(REMOVE_ITEM alone ${seen})
  list(REMOVE_ITEM ROOM_HEADERS ${alone})
  target_sources(${name} PUBLIC
    FILE_SET HEADERS BASE_DIRS "${CMAKE_CURRENT_SOURCE_DIR}/.." FILES ${ROOM_HEADERS}
    FILE_SET alone TYPE HEADERS BASE_DIRS "${CMAKE_CURRENT_SOURCE_DIR}/.." FILES ${alone})
  target_link_libraries(${name} PUBLIC NimbrelCompiler ${ROOM_LINK} PRIVATE ${ROOM_PRIVATE_LINK})
  set_target_properties(${name} PROPERTIES
    AUTOMOC ${ROOM_MOC}
    VERIFY_INTERFACE_HEADER_SETS ON
    INTERFACE_HEADER_SETS_TO_VERIFY alone)
  if(ROOM_PRECOMPILE)
    nimbrel_precompile(${name} ${ROOM_PRECOMPILE})
  endif()
endfunction()

# nimbrel_program(NAME SOURCES … [LINK …] [MOC])
function(nimbrel_program name)
  cmake_parse_arguments(PROGRAM "MOC" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${PROGRAM_SOURCES})
  target_link_libraries(${name} PRIVATE NimbrelCompiler ${PROGRAM_LINK})
  set_target_properties(${name} PROPERTIES AUTOMOC ${PROGRAM_MOC})
  # It starts the sooner the fewer libraries are loaded.
  target_link_options(${name} PRIVATE -Wl,--as-needed)
endfunction()

# nimbrel_tests(NAME LABEL unit|window|desktop SOURCES … [LINK …] [PROGRAMS …] [PRECOMPILE …] [MOC])
# One test program for a room; PROGRAMS are executables that it starts, built before it.
function(nimbrel_tests name)
  # Fewer are compiled sooner than their headers.
  set(few_files 4)
  cmake_parse_arguments(TESTS "MOC" "LABEL" "SOURCES;LINK;PROGRAMS;PRECOMPILE" ${ARGN})
  add_executable(${name} ${TESTS_SOURCES})
  target_link_libraries(${name} PRIVATE NimbrelCompiler TestSupport ${TESTS_LINK})
  list(LENGTH TESTS_SOURCES count)
  if(count GREATER_EQUAL few_files)
    nimbrel_precompile(${name} algorithm filesystem functional gmock/gmock.h gtest/gtest.h memory optional string vector
      ${TESTS_PRECOMPILE})
  endif()
  set_target_properties(${name} PROPERTIES AUTOMOC ${TESTS_MOC}
    RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
  if(NIMBREL_SANITIZE AND NOT TESTS_LABEL STREQUAL unit)
    # Only unit tests run under the sanitizers: the others are built there by name.
    set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
    return()
  endif()
  if(TESTS_PROGRAMS)
    add_dependencies(${name} ${TESTS_PROGRAMS})
  endif()
  set(properties LABELS "${TESTS_LABEL}" TIMEOUT 120)
  if(TESTS_LABEL STREQUAL desktop)
    # One at a time: each has a display, a window manager and clients to start.
    list(APPEND properties RESOURCE_LOCK desktop)
  endif()
  gtest_discover_tests(${name}
    TEST_PREFIX "${name}."
    DISCOVERY_MODE PRE_TEST
    PROPERTIES ${properties})
endfunction()
