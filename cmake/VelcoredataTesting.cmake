# vcd_add_test_executable(NAME <name> LABELS <label>... SOURCES <file>...
#                         [LIBRARIES <lib>...])
#
# Builds test_<name> from GoogleTest sources and registers each test with
# CTest under the given labels, so `ctest -L <label>` runs one subsystem.
# Tests in suites whose name contains "Concurrency" also get the label
# `concurrency`, which CI runs under ThreadSanitizer.
include(GoogleTest)
find_package(GTest REQUIRED)

function(vcd_add_test_executable)
  cmake_parse_arguments(ARG "" "NAME" "LABELS;SOURCES;LIBRARIES" ${ARGN})
  set(target test_${ARG_NAME})
  add_executable(${target} ${ARG_SOURCES})
  target_link_libraries(${target} PRIVATE velcoredata::velcoredata GTest::gmock GTest::gtest_main
    ${ARG_LIBRARIES})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  vcd_set_warnings(${target})
  gtest_discover_tests(${target}
    TEST_FILTER "-*Concurrency*"
    TEST_LIST ${target}_serial_TESTS
    DISCOVERY_TIMEOUT 60)
  gtest_discover_tests(${target}
    TEST_FILTER "*Concurrency*"
    TEST_LIST ${target}_concurrency_TESTS
    DISCOVERY_TIMEOUT 60)
  # Labels are set from the discovered lists by a script that CTest reads
  # after the discovery scripts (a label list does not survive being passed
  # through gtest_discover_tests' PROPERTIES).
  set(label_script "${CMAKE_CURRENT_BINARY_DIR}/${target}_labels.cmake")
  file(WRITE "${label_script}" "
if(${target}_serial_TESTS)
  set_tests_properties(\${${target}_serial_TESTS} PROPERTIES LABELS \"${ARG_LABELS}\")
endif()
if(${target}_concurrency_TESTS)
  set_tests_properties(\${${target}_concurrency_TESTS} PROPERTIES LABELS \"${ARG_LABELS};concurrency\")
endif()
")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${label_script}")
endfunction()
