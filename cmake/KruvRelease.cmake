# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later

# The newest entry of dist/changelog says which version this is, of which day, and who maintains it:
# KRUV_RELEASE_VERSION, KRUV_RELEASE_DATE (2026-11-21) and KRUV_MAINTAINER.
set(changelog ${CMAKE_CURRENT_LIST_DIR}/../dist/changelog)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${changelog})
file(STRINGS ${changelog} entry REGEX "^kruv \\(|^ -- ")
if(NOT entry MATCHES
   "^kruv \\(([0-9.]+)\\)[^;]*;[^;]*; -- ([^>]*>)  [A-Z][a-z]+, ([0-9]+) ([A-Z][a-z]+) ([0-9]+)")
  message(FATAL_ERROR "dist/changelog does not begin with an entry of a Debian changelog")
endif()
set(KRUV_RELEASE_VERSION ${CMAKE_MATCH_1})
set(KRUV_MAINTAINER "${CMAKE_MATCH_2}")
set(day ${CMAKE_MATCH_3})
set(year ${CMAKE_MATCH_5})
set(months Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec)
list(FIND months ${CMAKE_MATCH_4} month)
math(EXPR month "101 + ${month}")
string(SUBSTRING ${month} 1 2 month)
set(KRUV_RELEASE_DATE ${year}-${month}-${day})
