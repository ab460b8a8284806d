# How this house is built: one static library a room, one test program a room.

add_library(house_flags INTERFACE)
target_compile_options(house_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
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
  target_link_options(house_flags INTERFACE -fsanitize=${sanitizers})
endif()
if(BRENVO_FUZZ)  # the fuzzer steers by what it reaches in the rooms
  target_compile_options(house_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Property of a test whose program draws: what Qt, the fonts and the drivers behind it keep to their
# end is not ours to judge. All other tests fail when something is left.
set(DRAWS ENVIRONMENT "ASAN_OPTIONS=detect_leaks=0")

# add_room(NAME USES TARGET...): the library of the sources in folder NAME.
function(add_room name)
  cmake_parse_arguments(ROOM "" "" "USES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${name}/*.cpp)
  if(sources)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${ROOM_USES} PRIVATE house_flags)
  else()  # headers only
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} INTERFACE ${ROOM_USES})
  endif()
endfunction()

# add_room_test(NAME USES TARGET...): the program of tests/NAME/*_test.cpp.
function(add_room_test name)
  cmake_parse_arguments(ROOM "" "" "USES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${name}/*.cpp)
  add_executable(${name}_test ${sources})
  target_link_libraries(${name}_test PRIVATE ${name} ${ROOM_USES} GTest::gmock GTest::gtest_main
                        house_flags)
  # Tests are many and short-lived: they compile fast rather than run fast.
  target_compile_options(${name}_test PRIVATE -O0)
  target_precompile_headers(${name}_test PRIVATE <gtest/gtest.h> <functional> <memory> <string> <vector>)
  target_compile_definitions(${name}_test PRIVATE
    SOURCE_DIR="${CMAKE_SOURCE_DIR}" BUILD_DIR="${CMAKE_BINARY_DIR}")
  # One entry a room: a program that starts a thousand times over tests no more than one that runs
  # a thousand tests.
  add_test(NAME ${name} COMMAND ${name}_test)
  set_tests_properties(${name} PROPERTIES TIMEOUT 900)
endfunction()
