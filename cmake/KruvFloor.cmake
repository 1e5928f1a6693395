# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later

# kruv_floor(<name> SOURCES <file>... PUBLIC <target>... [PRIVATE <target>...])
# The library kruv_<name> of one folder of src/. PUBLIC names the floors below and what their headers need.
function(kruv_floor name)
  cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  add_library(kruv_${name} STATIC ${ARG_SOURCES})
  target_include_directories(kruv_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(kruv_${name} PUBLIC ${ARG_PUBLIC} PRIVATE kruv_flags ${ARG_PRIVATE})
  kruv_precompiled(kruv_${name})
endfunction()
