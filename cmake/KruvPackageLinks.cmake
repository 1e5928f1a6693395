# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later

# Run by CPack over what it is about to pack: in the resources folder, each tool that is linked as it is links to where
# Debian's packages put it. One that is not installed there counts as missing when the program looks.
include(${CMAKE_CURRENT_LIST_DIR}/KruvTools.cmake)
file(GLOB_RECURSE adapters ${CPACK_TEMPORARY_DIRECTORY}/*/libexec/kruv/kruv-adapters)
foreach(program IN LISTS adapters)
  cmake_path(GET program PARENT_PATH folder)
  # It needs a library from the non-free component, which a package for everybody can't depend on.
  file(REMOVE ${folder}/aacplusenc)
  foreach(tool IN LISTS KRUV_LINKED_TOOLS)
    file(REMOVE ${folder}/${tool})
    file(CREATE_LINK ../../bin/${tool} ${folder}/${tool} SYMBOLIC)
  endforeach()
endforeach()
