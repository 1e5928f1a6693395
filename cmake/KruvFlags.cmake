# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# One target carries every compile flag. Link it PRIVATE from each target of ours.
add_library(kruv_flags INTERFACE)
target_compile_features(kruv_flags INTERFACE cxx_std_20)
target_compile_options(kruv_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion)
if(KRUV_WERROR)
  target_compile_options(kruv_flags INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # gcc 12.2 loses a pointer where a list is assigned to a structure's member in a loop (seen in Plan.cpp at -O2 and -O3).
  target_compile_options(kruv_flags INTERFACE -fno-tree-slp-vectorize)
endif()
if(CMAKE_UNITY_BUILD)
  # Sources are included then, and gcc takes their unnamed namespaces for those of a header.
  target_compile_options(kruv_flags INTERFACE -Wno-subobject-linkage)
endif()
target_compile_definitions(kruv_flags INTERFACE
  QT_NO_CAST_FROM_ASCII
  QT_NO_CAST_TO_ASCII
  QT_NO_CAST_FROM_BYTEARRAY
  QT_NO_URL_CAST_FROM_STRING
  QT_NO_CONTEXTLESS_CONNECT
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
  QT_NO_FOREACH
  QT_NO_KEYWORDS
  QT_STRICT_ITERATORS
  QT_DISABLE_DEPRECATED_BEFORE=0x060400
  KRUV_VERSION="${PROJECT_VERSION}")

# Half of the time of a build is reading the same headers again.
option(KRUV_PCH "Precompile the headers that most files include" ON)
# Programs and libraries are built with the same code model, so that they can share precompiled headers.
set(CMAKE_CXX_COMPILE_OPTIONS_PIE -fPIC)

# kruv_precompiled(<target>): lets a target of Qt code use the shared precompiled header.
function(kruv_precompiled target)
  if(KRUV_PCH)
    kruv_shared_headers(kruv_headers LIBS Qt6::Core HEADERS ${KRUV_COMMON_HEADERS})
    target_precompile_headers(${target} REUSE_FROM kruv_headers)
  endif()
endfunction()

set(KRUV_COMMON_HEADERS
  <QCoreApplication> <QDir> <QFile> <QFileInfo> <QHash> <QMap> <QObject> <QProcess> <QProcessEnvironment> <QSet> <QString>
  <QStringList> <QVariant>
  <algorithm> <array> <atomic> <functional> <map> <memory> <mutex> <optional> <span> <stdexcept> <string> <vector>)

# kruv_shared_headers(<name> LIBS <target>... HEADERS <header>...): the library that holds a precompiled header.
function(kruv_shared_headers name)
  if(TARGET ${name})
    return()
  endif()
  cmake_parse_arguments(ARG "" "" "LIBS;HEADERS" ${ARGN})
  file(TOUCH ${CMAKE_BINARY_DIR}/${name}.cpp)
  add_library(${name} STATIC ${CMAKE_BINARY_DIR}/${name}.cpp)
  set_target_properties(${name} PROPERTIES AUTOMOC OFF)
  target_link_libraries(${name} PRIVATE kruv_flags ${ARG_LIBS})
  target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

if(KRUV_SANITIZE)
  add_compile_options(-fsanitize=${KRUV_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${KRUV_SANITIZE})
  # What a sanitizer adds to the code makes gcc 12 warn of overflows that can't be; builds without one ask for these.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wno-array-bounds -Wno-maybe-uninitialized -Wno-restrict -Wno-stringop-overflow)
  endif()
endif()

set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()

# The resources folder: every external tool by its given name (see ARCHITECTURE.md).
set(KRUV_RESOURCES_DIR ${CMAKE_BINARY_DIR}/resources)
