# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later

# Fills the resources folder: links to the installed tools that fit as they are, the adapters under their names, and the
# tools of our own. Target kruv_resources does it in the build tree; `cmake --install` does it in <prefix>/libexec/kruv. A
# tool that is not installed gets no link (the next build looks again); nothing fails for the lack of one.
#
# The file is included by the build, and run as a script (cmake -P) with FOLDER set, at build and at install time.

include(${CMAKE_CURRENT_LIST_DIR}/KruvTools.cmake)

function(kruv_fill_resources folder)
  file(MAKE_DIRECTORY ${folder})
  file(REAL_PATH ${folder} folder)
  foreach(tool IN LISTS KRUV_LINKED_TOOLS)
    # Not through find_program's cache, nor from a resources folder that happens to be in PATH.
    set(found "")
    string(REPLACE ":" ";" places "$ENV{PATH}")
    foreach(place IN LISTS places ITEMS /usr/local/bin /usr/bin)
      if(NOT found AND NOT place STREQUAL "" AND EXISTS ${place}/${tool} AND NOT EXISTS ${place}/kruv-adapters)
        set(found ${place}/${tool})
      endif()
    endforeach()
    kruv_link(${folder}/${tool} "${found}")
  endforeach()
  foreach(tool IN LISTS KRUV_ADAPTED_TOOLS)
    kruv_link(${folder}/${tool} kruv-adapters)
  endforeach()
endfunction()

# Makes `link` point to `target`, or removes it when there is no target; touches nothing that is right already.
function(kruv_link link target)
  set(present "")
  if(IS_SYMLINK ${link})
    file(READ_SYMLINK ${link} present)
  endif()
  if(present STREQUAL "${target}")
    return()
  endif()
  file(REMOVE ${link})
  if(NOT target STREQUAL "")
    file(CREATE_LINK ${target} ${link} SYMBOLIC)
  endif()
endfunction()

if(CMAKE_SCRIPT_MODE_FILE)
  kruv_fill_resources(${FOLDER})
  return()
endif()

set(KRUV_RESOURCES_SCRIPT ${CMAKE_CURRENT_LIST_FILE})

# kruv_tool(<name> LIBS <target>...): a tool of our own, made of main.cpp beside the call and installed with the links.
function(kruv_tool name)
  cmake_parse_arguments(ARG "" "" "LIBS" ${ARGN})
  add_executable(${name} main.cpp)
  target_link_libraries(${name} PRIVATE kruv_flags ${ARG_LIBS})
  install(TARGETS ${name} DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/kruv)
  set_property(GLOBAL APPEND PROPERTY KRUV_TOOLS ${name})
endfunction()

# kruv_resources(): adds the target that fills the build tree's folder, and the install step. Call it after kruv_tool().
function(kruv_resources)
  add_custom_target(kruv_resources ALL
    COMMAND ${CMAKE_COMMAND} -DFOLDER=${KRUV_RESOURCES_DIR} -P ${KRUV_RESOURCES_SCRIPT}
    COMMENT "Filling the resources folder"
    VERBATIM)
  get_property(tools GLOBAL PROPERTY KRUV_TOOLS)
  add_dependencies(kruv_resources ${tools})
  install(CODE "
    execute_process(COMMAND \"${CMAKE_COMMAND}\"
      \"-DFOLDER=\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBEXECDIR}/kruv\"
      -P \"${KRUV_RESOURCES_SCRIPT}\" COMMAND_ERROR_IS_FATAL ANY)")
endfunction()
