# One function per kind of target that is not the engine.

# korvani_tool_library(name SOURCES ... [HEADERS ...] [LIBRARIES ...])
#
# A static library that tools, examples and tests share. It sees the engine's headers; which of
# the engine's two libraries it runs with is up to the program that links it. Its headers are
# found from the Tools folder on: #include "Folder/Header.hpp".
function(korvani_tool_library name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;HEADERS;LIBRARIES")
  add_library(${name} STATIC ${ARG_SOURCES} ${ARG_HEADERS})
  korvani_compile_own(${name})
  # Tools read and write: what -O3 would add is time to compile.
  target_compile_options(${name} PRIVATE "$<$<AND:${KORVANI_GNU_LIKE},$<CONFIG:Release>>:-O2>")
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/Tools")
  target_link_libraries(${name} PUBLIC ${ARG_LIBRARIES} korvani_engine_headers)
endfunction()

# korvani_tool(name SOURCES ... [LIBRARIES ...])
#
# A command-line program; it is installed with the engine.
function(korvani_tool name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LIBRARIES")
  add_executable(${name} ${ARG_SOURCES})
  korvani_compile_own(${name})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/Tools")
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} KorvaniNavigation::KorvaniNavigation)
  if(KORVANI_INSTALL)
    install(TARGETS ${name} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Tools)
  endif()
endfunction()

# korvani_example(name SOURCES ... [LIBRARIES ...])
#
# An example program, built as build/<preset>/Examples/<name>.
function(korvani_example name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LIBRARIES")
  add_executable(${name} ${ARG_SOURCES})
  korvani_compile_own(${name})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY
                                           "${PROJECT_BINARY_DIR}/Examples")
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} KorvaniNavigation::KorvaniNavigation)
endfunction()

# korvani_test(name SOURCES ... [LIBRARIES ...])
#
# A test program of GoogleTest. Each of its cases is a test of CTest's own, in a process of its
# own: the engine's facade, queues and notification centre live as long as the process does.
# Tests that read files of the repository find them below KORVANI_SOURCE_DIR, and maps of real
# buildings (which may be absent) below KORVANI_MAPS_DIR.
function(korvani_test name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LIBRARIES")
  if(KORVANI_UNITY_TESTS)
    set(CMAKE_UNITY_BUILD ON)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  korvani_compile_own(${name})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/Tests")
  target_compile_definitions(${name} PRIVATE KORVANI_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
                                             KORVANI_MAPS_DIR="${KORVANI_MAPS_DIR}")
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} korvani_test_support
                                        korvani_engine_internal GTest::gmock GTest::gtest)
  # What is tested is optimised and instrumented; for the tests that would only take time.
  target_compile_options(${name} PRIVATE "$<$<AND:${KORVANI_GNU_LIKE},$<CONFIG:Release>>:-O1>")
  if(KORVANI_SANITIZE)
    target_compile_options(${name} PRIVATE -O0 -g0 -fno-sanitize=undefined)
  endif()
  # Generous times: sanitizers are slow, and machines may be busy.
  gtest_discover_tests(
    ${name}
    TEST_PREFIX "${name}."
    DISCOVERY_TIMEOUT 300
    PROPERTIES TIMEOUT 300 LABELS "${name}")
endfunction()
