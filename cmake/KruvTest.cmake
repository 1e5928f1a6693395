# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later

# kruv_add_test(<name> SOURCES <file>... LIBS <target>...)
# One GoogleTest program; each of its cases becomes one CTest test. Tests find the tools in the build tree's
# resources folder, use the offscreen platform and a UTF-8 locale, and never a desktop's session bus. Linking
# kruv_test_support brings a main() with a QCoreApplication. The case's label is its folder where that is tools, gui, cli or
# platform, else "engine"; the target kruv_<label>_tests builds all of one label.
function(kruv_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE kruv_flags ${ARG_LIBS} GTest::gtest)
  # What is measured and proven is the program; its tests are only to be built fast.
  target_compile_options(${name} PRIVATE -O0)
  if(KRUV_PCH AND "kruv_test_support" IN_LIST ARG_LIBS)
    kruv_shared_headers(kruv_test_headers LIBS kruv_regex GTest::gtest HEADERS <gtest/gtest.h> ${KRUV_COMMON_HEADERS})
    target_compile_options(kruv_test_headers PRIVATE -O0)
    target_precompile_headers(${name} REUSE_FROM kruv_test_headers)
  elseif(KRUV_PCH)
    kruv_shared_headers(kruv_tool_test_headers LIBS GTest::gtest HEADERS <gtest/gtest.h>)
    target_compile_options(kruv_tool_test_headers PRIVATE -O0)
    target_precompile_headers(${name} REUSE_FROM kruv_tool_test_headers)
  endif()
  if(NOT "kruv_test_support" IN_LIST ARG_LIBS)
    target_link_libraries(${name} PRIVATE GTest::gtest_main)
  endif()
  set(label engine)
  if(CMAKE_CURRENT_SOURCE_DIR MATCHES "/tests/(tools|gui|cli|platform)(/|$)")
    set(label ${CMAKE_MATCH_1})
  endif()
  if(NOT TARGET kruv_${label}_tests)
    add_custom_target(kruv_${label}_tests)
  endif()
  add_dependencies(kruv_${label}_tests ${name})
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300 LABELS ${label})
  # Discovery takes a list apart on its way to the tests, so the environment is set when they are known.
  set(environment_file ${CMAKE_CURRENT_BINARY_DIR}/${name}_environment.cmake)
  file(WRITE ${environment_file}
    "if(${name}_TESTS)\n"
    "  set_tests_properties(\${${name}_TESTS} PROPERTIES ENVIRONMENT \"${KRUV_TEST_ENVIRONMENT}\")\n"
    "endif()\n")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${environment_file})
endfunction()
include(GoogleTest)

set(KRUV_TEST_ENVIRONMENT
  KRUV_RESOURCES=${KRUV_RESOURCES_DIR}
  QT_QPA_PLATFORM=offscreen
  LC_ALL=C.UTF-8
  KRUV_JOURNAL=
  DBUS_SESSION_BUS_ADDRESS=disabled:
  DBUS_SYSTEM_BUS_ADDRESS=disabled:
  LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0
  TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/tsan.supp)
