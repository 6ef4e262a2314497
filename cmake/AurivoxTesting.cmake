# aurivox_add_test(NAME SOURCES ... LIBRARIES ... [PROPERTIES prop value ...])
# One GoogleTest executable; its tests are listed at test time, so that the
# Windows build lists them under Wine once the prefix's wineserver is up.
# PROPERTIES are set on every test (for example FIXTURES_REQUIRED).
function(aurivox_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES;PROPERTIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} aurivox_test_support
    GTest::gmock GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE AURIVOX_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  gtest_discover_tests(${name}
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 120
    PROPERTIES TIMEOUT 120 ${ARG_PROPERTIES}
    WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
endfunction()
