# Build rules shared by every folder.

include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

# One tree that looks like an installation, so that a program finds its data beside its libraries in both.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
# The build tree's folder of libraries, and that of the installation where it is another one.
set(CMAKE_INSTALL_RPATH "$ORIGIN/../lib;$ORIGIN/../${CMAKE_INSTALL_LIBDIR};$ORIGIN")
list(REMOVE_DUPLICATES CMAKE_INSTALL_RPATH)
# In the build tree too: CMake pads its own path there with empty entries, which name the current folder.
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)

find_program(DRENOVA_CCACHE ccache)
if(DRENOVA_CCACHE)
  # What the cache needs to accept precompiled headers: they contain no __TIME__ and none of our macros.
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros
                                  "${DRENOVA_CCACHE}")
endif()

add_library(drenova_options INTERFACE)
target_include_directories(drenova_options INTERFACE "${CMAKE_SOURCE_DIR}")
# In force for every target: a precompiled header serves only those that see its macros alike.
target_link_libraries(drenova_options INTERFACE Boost::headers)
target_compile_definitions(drenova_options INTERFACE $<TARGET_PROPERTY:fmt::fmt,INTERFACE_COMPILE_DEFINITIONS>)
target_compile_options(drenova_options INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast -Wcast-qual
  -Wnon-virtual-dtor -Woverloaded-virtual -Wuseless-cast -Wduplicated-cond -Wlogical-op
  -Wformat=2 -Wimplicit-fallthrough)
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  get_target_property(options drenova_options INTERFACE_COMPILE_OPTIONS)
  list(REMOVE_ITEM options -Wuseless-cast -Wduplicated-cond -Wlogical-op)
  set_target_properties(drenova_options PROPERTIES INTERFACE_COMPILE_OPTIONS "${options}")
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  # At this depth of inlining GCC 12 warns of every optional and every joined string; the dev build keeps the warnings.
  target_compile_options(drenova_options INTERFACE -Wno-maybe-uninitialized -Wno-restrict)
endif()
if(DRENOVA_SANITIZE)
  # Instrumented code draws warnings that plain code does not; in the other builds they are errors.
  target_compile_options(drenova_options INTERFACE -Wno-error)
  target_compile_options(drenova_options INTERFACE -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all)
  target_link_options(drenova_options INTERFACE -fsanitize=address,undefined,float-cast-overflow)
endif()
if(DRENOVA_FUZZ)
  # Every library reports to the fuzzer which way an input took; only the fuzzers are linked with its main function.
  target_compile_options(drenova_options INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined,float-cast-overflow -fno-sanitize-recover=all)
  target_link_options(drenova_options INTERFACE -fsanitize=address,undefined,float-cast-overflow)
endif()

# Headers that nearly every file includes, precompiled once for all targets: parsing them was more than half of the time
# of a build. Every file still includes what it uses and compiles without.
set(DRENOVA_COMMON_HEADERS
  <algorithm> <array> <cmath> <cstdint> <filesystem> <functional> <limits> <map> <memory> <optional> <ostream> <set>
  <span> <string> <string_view> <utility> <variant> <vector>
  <absl/container/flat_hash_map.h> <absl/container/flat_hash_set.h> <boost/make_shared.hpp> <boost/shared_ptr.hpp>
  <fmt/format.h>)
add_library(drenova_precompiled OBJECT "${CMAKE_SOURCE_DIR}/cmake/Precompiled.cpp")
target_link_libraries(drenova_precompiled PRIVATE drenova_options absl::flat_hash_map)
target_precompile_headers(drenova_precompiled PRIVATE ${DRENOVA_COMMON_HEADERS})
if(DRENOVA_TESTS)
  # Tests are compiled more often than they run: little optimising. There GCC 12 doubts bounds within the strings of the
  # standard library; the code under test keeps these warnings.
  add_library(drenova_test_options INTERFACE)
  target_link_libraries(drenova_test_options INTERFACE drenova_options)
  target_compile_options(drenova_test_options INTERFACE -O1 -Wno-array-bounds -Wno-stringop-overflow)
  add_library(drenova_precompiled_tests OBJECT EXCLUDE_FROM_ALL "${CMAKE_SOURCE_DIR}/cmake/Precompiled.cpp")
  target_link_libraries(drenova_precompiled_tests PRIVATE drenova_test_options absl::flat_hash_map GTest::gmock)
  target_precompile_headers(drenova_precompiled_tests PRIVATE ${DRENOVA_COMMON_HEADERS} <gmock/gmock.h>
                                                              <gtest/gtest.h>)
endif()

# drenova_library(<name> <linked libraries>...): the shared library drenova_<name> from the sources of this folder and
# its rooms. A folder below with a CMakeLists.txt of its own is a target of its own.
function(drenova_library name)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
  file(GLOB_RECURSE own_targets CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*/CMakeLists.txt")
  foreach(own_target IN LISTS own_targets)
    cmake_path(GET own_target PARENT_PATH folder)
    list(FILTER sources EXCLUDE REGEX "^${folder}/")
  endforeach()
  add_library(drenova_${name} SHARED ${sources})
  target_link_libraries(drenova_${name} PUBLIC drenova_options ${ARGN})
  target_precompile_headers(drenova_${name} REUSE_FROM drenova_precompiled)
  install(TARGETS drenova_${name} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
endfunction()

# drenova_test(<name> <linked libraries>...): the test program tests_<name> from this folder's sources.
function(drenova_test name)
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
  add_executable(tests_${name} ${sources})
  target_link_libraries(tests_${name} PRIVATE drenova_test_options ${ARGN} GTest::gmock GTest::gtest GTest::gtest_main)
  # As Qt wants it, and libraries are: programs compiled in another way could not use the precompiled header.
  target_compile_options(tests_${name} PRIVATE -fPIC)
  target_precompile_headers(tests_${name} REUSE_FROM drenova_precompiled_tests)
  target_compile_definitions(tests_${name} PRIVATE
    DRENOVA_SOURCE_DIR="${CMAKE_SOURCE_DIR}" DRENOVA_BINARY_DIR="${CMAKE_BINARY_DIR}"
    DRENOVA_REFERENCE_DATA="${CMAKE_SOURCE_DIR}/../shared/data")
  add_test(NAME ${name} COMMAND tests_${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 600)
endfunction()

# drenova_stage_data(): puts the data folder where an installation has it, in the build tree as a link.
function(drenova_stage_data)
  file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/share")
  file(CREATE_LINK "${CMAKE_SOURCE_DIR}/data" "${CMAKE_BINARY_DIR}/share/drenova" SYMBOLIC)
  install(DIRECTORY "${CMAKE_SOURCE_DIR}/data/" DESTINATION "${CMAKE_INSTALL_DATADIR}/drenova")
endfunction()
