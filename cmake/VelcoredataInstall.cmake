# Install rules: library, headers, CMake package and pkg-config file.
include(CMakePackageConfigHelpers)

set(VCD_CMAKE_INSTALL_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/velcoredata")

install(TARGETS velcoredata EXPORT velcoredataTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(DIRECTORY "${PROJECT_SOURCE_DIR}/velcoredata/"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/velcoredata"
  FILES_MATCHING PATTERN "*.h" PATTERN "*.def"
  PATTERN "internal" EXCLUDE)

install(EXPORT velcoredataTargets
  NAMESPACE velcoredata::
  DESTINATION "${VCD_CMAKE_INSTALL_DIR}")

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/velcoredataConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/velcoredataConfig.cmake"
  INSTALL_DESTINATION "${VCD_CMAKE_INSTALL_DIR}")
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/velcoredataConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/velcoredataConfig.cmake"
  "${PROJECT_BINARY_DIR}/velcoredataConfigVersion.cmake"
  DESTINATION "${VCD_CMAKE_INSTALL_DIR}")

file(RELATIVE_PATH VCD_PC_RELATIVE_PREFIX
  "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
configure_file("${PROJECT_SOURCE_DIR}/cmake/velcoredata.pc.in"
  "${PROJECT_BINARY_DIR}/velcoredata.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/velcoredata.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

if(VCD_BUILD_TOOLS)
  install(TARGETS vcd RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
