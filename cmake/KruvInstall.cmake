# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later

# What goes beside the program in a prefix, and the Debian package. `cpack -G DEB` in the build folder makes it.

set(dist ${CMAKE_CURRENT_SOURCE_DIR}/dist)

if(KRUV_GUI)
  # What the program takes, its own records tell.
  set(MEDIA_TYPES "@MEDIA_TYPES@")
  foreach(document IN ITEMS desktop metainfo.xml)
    set(name org.kruv.Kruv.${document})
    configure_file(${dist}/${name}.in ${name}.in @ONLY)
    add_custom_command(OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}
      COMMAND kruv_document_writer ${CMAKE_CURRENT_BINARY_DIR}/${name}.in > ${CMAKE_CURRENT_BINARY_DIR}/${name}
      DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/${name}.in kruv_document_writer
      VERBATIM)
    list(APPEND documents ${CMAKE_CURRENT_BINARY_DIR}/${name})
  endforeach()
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/org.kruv.Kruv.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/org.kruv.Kruv.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(FILES ${dist}/org.kruv.Kruv.service DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
  install(FILES ${dist}/org.kruv.Kruv.mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
          RENAME org.kruv.Kruv.xml)
  set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  install(FILES ${dist}/icons/org.kruv.Kruv.svg DESTINATION ${icons}/scalable/apps)
  foreach(size IN ITEMS 16 22 24 32 48 64 128 256)
    install(FILES ${dist}/icons/org.kruv.Kruv-${size}.png DESTINATION ${icons}/${size}x${size}/apps
            RENAME org.kruv.Kruv.png)
  endforeach()
endif()

# The page and the changelog are packed as distributions want them; `man` reads either.
find_program(KRUV_GZIP gzip REQUIRED)
# These two are the writer's to fill.
set(SYNOPSIS "@SYNOPSIS@")
set(COMMANDS "@COMMANDS@")
configure_file(${dist}/kruv.1.in kruv.1.in @ONLY)
set(page_frame ${CMAKE_CURRENT_BINARY_DIR}/kruv.1.in)
set(page ${CMAKE_CURRENT_BINARY_DIR}/kruv.1.gz)
set(plain_page ${CMAKE_CURRENT_BINARY_DIR}/kruv.1)
add_custom_command(OUTPUT ${page}
  COMMAND kruv_document_writer ${page_frame} > ${plain_page}
  COMMAND ${KRUV_GZIP} -9nc ${plain_page} > ${page}
  DEPENDS ${page_frame} kruv_document_writer
  VERBATIM)
set(changelog ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz)
add_custom_command(OUTPUT ${changelog}
  COMMAND ${KRUV_GZIP} -9nc ${dist}/changelog > ${changelog}
  DEPENDS ${dist}/changelog
  VERBATIM)
add_custom_target(kruv_documents ALL DEPENDS ${page} ${changelog} ${documents})
install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

set(completions ${dist}/completions)
install(FILES ${completions}/kruv.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME kruv)
install(FILES ${completions}/_kruv DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
install(FILES ${completions}/kruv.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)

install(FILES README.md docs/cluster.md docs/plan-format.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kruv)
install(FILES ${dist}/cluster/kruv-array.sbatch DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kruv/examples)
install(FILES ${dist}/copyright ${changelog} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kruv)
install(FILES ${dist}/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME kruv)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kruv)
set(CPACK_PACKAGE_VENDOR "The Kruv developers")
set(CPACK_PACKAGE_CONTACT "${KRUV_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "convert, verify and keep collections of lossless audio")
set(CPACK_PACKAGE_DESCRIPTION
  "Kruv turns lists of audio files into jobs, runs the codec tools that do the
work, many at a time, and keeps tags, checksums and originals safe on the way.
It has a window and a command line.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
# The package's links name the places of the distribution's tools, whatever the machine it is made on has, and what
# needs a library outside the distribution proper stays out.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/KruvPackageLinks.cmake)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS flac)
# Opened where they are wanted, so that they are not found among the program's libraries.
foreach(library IN ITEMS libavcodec libavformat libavutil libswresample)
  string(REGEX MATCH "^[0-9]+" major "${FFMPEG_${library}_VERSION}")
  string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS ", ${library}${major}")
  if(library MATCHES "codec|format")
    string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS " | ${library}-extra${major}")
  endif()
endforeach()
if(KRUV_GUI)
  # Without it the window finds no display: the library that needs it only recommends it.
  string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS ", qt6-qpa-plugins, hicolor-icon-theme")
endif()
set(recommended ${KRUV_TOOL_PACKAGES} qt6-image-formats-plugins)
list(REMOVE_ITEM recommended flac)
list(JOIN recommended ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland, libglib2.0-bin, udisks2")
include(CPack)
