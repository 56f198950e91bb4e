# Copyright (c) 2026 the qxdraw authors
# SPDX-License-Identifier: MIT

# Installs BUILD_DIR into an empty PREFIX and looks at what has arrived there.

file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX}
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

foreach(path
    ${INCLUDEDIR}/qx/qxdraw.h
    ${LIBDIR}/libqxdraw.so
    ${LIBDIR}/libqxdraw.so.${SOVERSION}
    ${LIBDIR}/cmake/qxdraw/qxdrawConfig.cmake
    ${LIBDIR}/pkgconfig/qxdraw.pc)
  if(NOT EXISTS ${PREFIX}/${path})
    message(SEND_ERROR "not installed: ${path}")
  endif()
endforeach()

file(GLOB_RECURSE headers RELATIVE ${PREFIX} ${PREFIX}/${INCLUDEDIR}/*)
foreach(header ${headers})
  if(header MATCHES "/internal/" OR NOT header MATCHES "^${INCLUDEDIR}/qx/.*[.]h$")
    message(SEND_ERROR "not a public header, but installed: ${header}")
  endif()
endforeach()
