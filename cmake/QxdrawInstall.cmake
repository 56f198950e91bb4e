# Copyright (c) 2026 the qxdraw authors
# SPDX-License-Identifier: MIT

# Installs the library with its headers, the CMake package `qxdraw` and qxdraw.pc.

include(CMakePackageConfigHelpers)

set(QXDRAW_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/qxdraw)

install(TARGETS qxdraw EXPORT qxdrawTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT qxdrawTargets NAMESPACE qxdraw:: DESTINATION ${QXDRAW_PACKAGE_DIR})

configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/qxdrawConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/qxdrawConfig.cmake
  INSTALL_DESTINATION ${QXDRAW_PACKAGE_DIR})
# Before 1.0 every minor version may break its consumers.
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/qxdrawConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/qxdrawConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/qxdrawConfigVersion.cmake
  DESTINATION ${QXDRAW_PACKAGE_DIR})

# Relative to qxdraw.pc itself, so that an installed tree may be moved.
file(RELATIVE_PATH QXDRAW_PC_TO_PREFIX
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(${PROJECT_SOURCE_DIR}/cmake/qxdraw.pc.in ${CMAKE_CURRENT_BINARY_DIR}/qxdraw.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/qxdraw.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
