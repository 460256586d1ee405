# The kinds of targets that the project consists of.

include(GoogleTest)

# nimbrel_room(NAME SOURCES … HEADERS … [LINK …] [PRIVATE_LINK …] [MOC])
# A static library for the folder it is called in. Headers are included as "Room/Header.h", and each is
# compiled by itself as part of all_verify_interface_header_sets.
function(nimbrel_room name)
  cmake_parse_arguments(ROOM "MOC" "" "SOURCES;HEADERS;LINK;PRIVATE_LINK" ${ARGN})
  add_library(${name} STATIC ${ROOM_SOURCES})
  target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS "${CMAKE_CURRENT_SOURCE_DIR}/.." FILES ${ROOM_HEADERS})
  target_link_libraries(${name} PUBLIC NimbrelCompiler ${ROOM_LINK} PRIVATE ${ROOM_PRIVATE_LINK})
  set_target_properties(${name} PROPERTIES AUTOMOC ${ROOM_MOC} VERIFY_INTERFACE_HEADER_SETS ON)
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

# nimbrel_tests(NAME LABEL unit|window|desktop SOURCES … [LINK …] [PROGRAMS …] [MOC])
# One test program for a room; PROGRAMS are executables that it starts, built before it.
function(nimbrel_tests name)
  cmake_parse_arguments(TESTS "MOC" "LABEL" "SOURCES;LINK;PROGRAMS" ${ARGN})
  add_executable(${name} ${TESTS_SOURCES})
  target_link_libraries(${name} PRIVATE NimbrelCompiler TestSupport ${TESTS_LINK})
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
