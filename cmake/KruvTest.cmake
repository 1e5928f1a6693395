# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later

# kruv_add_test(<name> SOURCES <file>... LIBS <target>...)
# One GoogleTest program; each of its cases becomes one CTest test. Tests find the tools in the build tree's
# resources folder, use the offscreen platform and a UTF-8 locale, and never a desktop's session bus. Linking
# kruv_test_support brings a main() with a QCoreApplication.
function(kruv_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE kruv_flags ${ARG_LIBS} GTest::gtest)
  if(NOT "kruv_test_support" IN_LIST ARG_LIBS AND NOT KRUV_TEST_OWN_MAIN_${name})
    target_link_libraries(${name} PRIVATE GTest::gtest_main)
  endif()
  gtest_discover_tests(${name}
    DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT 300
    ENVIRONMENT "KRUV_RESOURCES=${KRUV_RESOURCES_DIR};QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;DBUS_SESSION_BUS_ADDRESS=disabled:;TSAN_OPTIONS=${KRUV_TSAN_OPTIONS}")
endfunction()
include(GoogleTest)
set(KRUV_TSAN_OPTIONS "suppressions=${CMAKE_SOURCE_DIR}/tests/support/tsan.supp")
