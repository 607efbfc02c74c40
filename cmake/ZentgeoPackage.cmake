# Installs the geometry library with its package file: cmake --install BUILD --component zentgeo
include(CMakePackageConfigHelpers)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/zentgeo)
add_dependencies(zentgeo zentgeo_host_functions) # so that building zentgeo makes all that is installed
set_target_properties(zentgeo_plain_host PROPERTIES EXPORT_NAME plain_host)
set_target_properties(zentgeo_host_functions PROPERTIES EXPORT_NAME host_functions)
install(TARGETS zentgeo zentgeo_plain_host zentgeo_host_functions EXPORT zentgeo
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT zentgeo
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zentgeo COMPONENT zentgeo)
install(EXPORT zentgeo NAMESPACE zentgeo:: FILE zentgeo-targets.cmake DESTINATION ${package} COMPONENT zentgeo)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zentgeo-config-version.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES cmake/zentgeo-config.cmake ${PROJECT_BINARY_DIR}/zentgeo-config-version.cmake
  DESTINATION ${package} COMPONENT zentgeo)
