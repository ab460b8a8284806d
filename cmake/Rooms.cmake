# How this house is built: one static library a room, one test program a room.

add_library(house_flags INTERFACE)
target_compile_options(house_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(BRENVO_TESTS)
  # Whoever builds the program to use it is not stopped by what a compiler supposes.
  target_compile_options(house_flags INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees overlaps in std::string that are not there (PR 105651).
  target_compile_options(house_flags INTERFACE -Wno-restrict)
endif()
if(BRENVO_SANITIZE)
  # A number too large for a whole one is no part of "undefined" for every compiler.
  set(sanitizers address,undefined,float-cast-overflow)
  target_compile_options(house_flags INTERFACE -fsanitize=${sanitizers}
                         -fno-sanitize-recover=undefined,float-cast-overflow
                         -fno-omit-frame-pointer)
  if(BRENVO_TESTS)
    # These look at every single access, a third of what all costs to compile, and a pointer to
    # nowhere is the address sanitizer's too. Where the fuzzer steers nothing is left out.
    target_compile_options(house_flags INTERFACE
                           -fno-sanitize=null,alignment,object-size,pointer-overflow)
  endif()
  target_link_options(house_flags INTERFACE -fsanitize=${sanitizers})
endif()
if(BRENVO_FUZZ)  # the fuzzer steers by what it reaches in the rooms
  target_compile_options(house_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Some hundred programs are linked, most of them tests.
find_program(FAST_LINKER ld.lld)
if(FAST_LINKER)
  target_link_options(house_flags INTERFACE -fuse-ld=lld)
endif()

# Property of a test whose program draws: what Qt, the fonts and the drivers behind it keep to their
# end is not ours to judge. All other tests fail when something is left.
set(DRAWS ENVIRONMENT "ASAN_OPTIONS=detect_leaks=0")

# compile_after_usual_headers(TARGET): what nearly every source includes is read once for all. Only
# where tests are built: elsewhere a source that does not include what it uses is found out.
function(compile_after_usual_headers target)
  if(NOT BRENVO_TESTS)
    return()
  endif()
  if(TARGET base AND NOT target STREQUAL "base")
    target_precompile_headers(${target} REUSE_FROM base)
  else()
    target_precompile_headers(${target} PRIVATE <fmt/format.h> <algorithm> <cstdint> <filesystem>
                              <functional> <map> <memory> <optional> <set> <span> <string>
                              <string_view> <unordered_map> <utility> <variant> <vector>)
  endif()
endfunction()

# add_room(NAME USES TARGET... INSIDE TARGET...): the library of the sources in folder NAME. Others see the headers in
# NAME/include/NAME and no more: the rest is private. A room sees what it uses, so that an include of
# anything else does not compile. What it uses it hands on to those who use it, but for what it uses
# INSIDE.
function(add_room name)
  cmake_parse_arguments(ROOM "" "" "USES;INSIDE" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${name}/*.cpp)
  if(sources)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/${name}/include)
    target_link_libraries(${name} PUBLIC ${ROOM_USES} PRIVATE ${ROOM_INSIDE} house_flags)
    if(NOT ROOM_USES MATCHES "Qt6")
      compile_after_usual_headers(${name})
    endif()
  else()  # headers only
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${CMAKE_SOURCE_DIR}/${name}/include)
    target_link_libraries(${name} INTERFACE ${ROOM_USES})
  endif()
  know_room(${name} ${ROOM_USES} ${ROOM_INSIDE})
endfunction()

# know_room(NAME TARGET...): a room and what it uses, for the picture and the checks.
function(know_room name)
  get_property(rooms GLOBAL PROPERTY HOUSE_ROOMS)
  set(uses ${ARGN})
  list(FILTER uses INCLUDE REGEX "^[a-z]+$")
  foreach(used IN LISTS uses)
    if(NOT used IN_LIST rooms)
      list(REMOVE_ITEM uses ${used})  # a library, or a room that is not known yet: no arrow leads up
    endif()
  endforeach()
  set_property(GLOBAL APPEND PROPERTY HOUSE_ROOMS ${name})
  set_property(GLOBAL PROPERTY HOUSE_USES_${name} "${uses}")
endfunction()

# Writes what the rooms use, from the top down, into rooms.txt of the build folder: a line for all
# rooms that use the same. The README shows it, and a test compares.
function(draw_rooms)
  get_property(rooms GLOBAL PROPERTY HOUSE_ROOMS)
  list(REVERSE rooms)
  set(picture "")
  set(drawn "")
  foreach(room IN LISTS rooms)
    if(room IN_LIST drawn)
      continue()
    endif()
    get_property(uses GLOBAL PROPERTY HOUSE_USES_${room})
    set(alike "")
    foreach(other IN LISTS rooms)
      get_property(others GLOBAL PROPERTY HOUSE_USES_${other})
      if(others STREQUAL uses)
        list(PREPEND alike ${other})
      endif()
    endforeach()
    list(APPEND drawn ${alike})
    list(JOIN alike " " left)
    list(JOIN uses " " right)
    if(right STREQUAL "")
      string(APPEND picture "    ${left}\n")
    else()
      string(APPEND picture "    ${left} ──► ${right}\n")
    endif()
  endforeach()
  file(WRITE ${CMAKE_BINARY_DIR}/rooms.txt "${picture}")
endfunction()

# For tests, benchmarks and fuzz targets, which look inside: all sources, private headers included,
# and the places of the sources and of what is built.
add_library(inside STATIC EXCLUDE_FROM_ALL ${CMAKE_SOURCE_DIR}/tests/support/places.cpp)
target_compile_definitions(inside PRIVATE
  SOURCE_DIR="${CMAKE_SOURCE_DIR}" BUILD_DIR="${CMAKE_BINARY_DIR}")
target_include_directories(inside PUBLIC ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/tools)
target_link_libraries(inside PUBLIC file dialect SQLite::SQLite3 PRIVATE house_flags)

# compile_as_tests(TARGET): tests are many and short-lived, they compile fast rather than run fast.
function(compile_as_tests target)
  target_compile_options(${target} PRIVATE -O0)
  # Several files at a time: most of a file's cost is what it instantiates of the test library.
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
  get_target_property(uses ${target} LINK_LIBRARIES)
  if(TARGET base_test AND NOT target STREQUAL "base_test" AND NOT "ui" IN_LIST uses)
    target_precompile_headers(${target} REUSE_FROM base_test)
  else()  # what is compiled for Qt is compiled otherwise
    target_precompile_headers(${target} PRIVATE <gmock/gmock.h> <gtest/gtest.h> <filesystem>
                              <fstream> <functional> <memory> <optional> <string> <vector>)
  endif()
endfunction()

# add_room_test(NAME USES TARGET...): the program of tests/NAME/*_test.cpp.
function(add_room_test name)
  cmake_parse_arguments(ROOM "" "" "USES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${name}/*.cpp)
  add_executable(${name}_test ${sources})
  target_link_libraries(${name}_test PRIVATE ${name} ${ROOM_USES} inside GTest::gmock
                        GTest::gtest_main house_flags)
  compile_as_tests(${name}_test)
  # One entry a room: a program that starts a thousand times over tests no more than one that runs
  # a thousand tests.
  add_test(NAME ${name} COMMAND ${name}_test)
  set_tests_properties(${name} PROPERTIES TIMEOUT 900)
endfunction()
