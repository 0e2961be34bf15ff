# Compiler settings and the two target functions every folder uses.

# At -O3 g++ 12 warns of overlaps and uninitialised strings in std::string that are none.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
# Lines and functions are what a backtrace needs; more takes a fifth of the time of a build.
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g1 -DNDEBUG")

# A compiler cache where there is one. Paths inside the tree are made relative and the build
# directory is left out of the key, so that a clone elsewhere finds what this one compiled.
# It is a rule of the build, so that the compilation database has the compiler alone.
find_program(ORIN_CCACHE ccache)
if(ORIN_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set_property(GLOBAL PROPERTY RULE_LAUNCH_COMPILE
    "${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1 CCACHE_MAXSIZE=5G ${ORIN_CCACHE}")
endif()

add_library(orin_options INTERFACE)
target_include_directories(orin_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(orin_options INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion
  -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(orin_options INTERFACE -Wduplicated-cond -Wlogical-op)
endif()
# One build serves the tests and the fuzz targets: a fuzz target links the same objects, and the
# counters of reached code cost a test a tenth of its time.
if(ORIN_SANITIZE)
  target_compile_options(orin_options INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(orin_options INTERFACE -fsanitize=address,undefined)
endif()

# orin_library(folder [DEPENDS other folders...]): every .cpp of the current
# folder and of its sub-folders (other than ui/) as the static library orin_<folder>.
function(orin_library folder)
  cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/ui/")
  if(NOT sources)
    add_library(orin_${folder} INTERFACE)
    return()
  endif()
  add_library(orin_${folder} STATIC ${sources})
  target_link_libraries(orin_${folder} PUBLIC orin_options tl::expected)
  foreach(other ${ARG_DEPENDS})
    target_link_libraries(orin_${folder} PUBLIC orin_${other})
  endforeach()
endfunction()

# orin_tests(folder [DEPENDS other folders...]): tests/<folder>/*_test.cpp as one program.
function(orin_tests folder)
  cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${folder}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(orin_${folder}_tests ${sources})
  target_link_libraries(orin_${folder}_tests PRIVATE orin_test_support GTest::gmock GTest::gtest_main)
  foreach(other ${ARG_DEPENDS})
    target_link_libraries(orin_${folder}_tests PRIVATE orin_${other})
  endforeach()
  gtest_discover_tests(orin_${folder}_tests DISCOVERY_MODE PRE_TEST
    TEST_PREFIX "${folder}." PROPERTIES TIMEOUT 300)
endfunction()
