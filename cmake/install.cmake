# Installs the library, its public headers and a package config, so that an
# outside project can find_package(Halvane CONFIG) and link Halvane::halvane.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS halvane EXPORT HalvaneTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# Public headers only: the frame's internals (descriptor tables, algorithms) stay private.
install(FILES src/halvane.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/halvane)
foreach(dir base administration measurements settings capabilities antenna)
  install(DIRECTORY src/${dir}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/halvane/${dir}
          FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE)
endforeach()
install(FILES src/frame/dataclass DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/halvane/frame)
install(FILES src/frame/dataclass.h src/frame/modemanager.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/halvane/frame)
install(FILES src/frame/schema/schema.h src/frame/schema/visit.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/halvane/frame/schema)

install(EXPORT HalvaneTargets NAMESPACE Halvane:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Halvane)
configure_package_config_file(cmake/HalvaneConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/HalvaneConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Halvane)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/HalvaneConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/HalvaneConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/HalvaneConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Halvane)
