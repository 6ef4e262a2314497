# aurivox_add_test(NAME [MEDIA_FOUNDATION] SOURCES ... LIBRARIES ... [PROPERTIES prop value ...])
# One GoogleTest executable; its tests are listed at test time, so that the
# Windows build lists them under Wine once the prefix's wineserver is up.
# PROPERTIES are set on every test (for example FIXTURES_REQUIRED).
#
# MEDIA_FOUNDATION marks programs that drive Wine's Media Foundation. Wine's
# GStreamer sources can leave a thread behind (a damaged file's source whose
# creation never returned and was given up) that crashes the process while
# it exits, after every test has passed. For these programs GoogleTest's own
# verdict decides, not the exit status; a crash while a test runs still
# fails it, since GoogleTest then never reports it passed.
function(aurivox_add_test name)
  cmake_parse_arguments(ARG "MEDIA_FOUNDATION" "" "SOURCES;LIBRARIES;PROPERTIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} aurivox_test_support
    GTest::gmock GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE AURIVOX_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  set(verdict)
  if(ARG_MEDIA_FOUNDATION AND CMAKE_CROSSCOMPILING)
    set(verdict PASS_REGULAR_EXPRESSION "\\[  PASSED  \\] 1 test"
                FAIL_REGULAR_EXPRESSION "\\[  FAILED  \\]")
  endif()
  gtest_discover_tests(${name}
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 120
    PROPERTIES TIMEOUT 120 ${verdict} ${ARG_PROPERTIES}
    WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
endfunction()
