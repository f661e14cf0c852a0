# Installs the library (component Runtime), and its public headers, package
# config and pkg-config file (component Development), so that an outside
# project can find_package(Halvane CONFIG) and link Halvane::halvane, or ask
# pkg-config for halvane. The Qt 6 build installs beside the Qt 5 one: package
# HalvaneQt6 with target HalvaneQt6::halvane, pkg-config module halvane-qt6,
# library libhalvane-qt6 and headers under include/halvane-qt6.
include(CMakePackageConfigHelpers)

set(HALVANE_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}${HALVANE_INCLUDE_SUBDIR})
set(HALVANE_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/${HALVANE_PACKAGE})

install(TARGETS halvane EXPORT HalvaneTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
  INCLUDES DESTINATION ${HALVANE_INSTALL_INCLUDEDIR})

# Public headers only: the frame's internals (descriptor tables, algorithms) stay private.
set(HALVANE_HEADERS_TO ${HALVANE_INSTALL_INCLUDEDIR}/halvane)
install(FILES src/halvane.h ${HALVANE_GENERATED_INCLUDE}/halvane/export.h ${HALVANE_GENERATED_INCLUDE}/halvane/version.h
  DESTINATION ${HALVANE_HEADERS_TO} COMPONENT Development)
foreach(dir base administration measurements settings capabilities antenna)
  install(DIRECTORY src/${dir}/ DESTINATION ${HALVANE_HEADERS_TO}/${dir} COMPONENT Development
          FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE)
endforeach()
install(FILES src/frame/dataclass src/frame/dataclass.h src/frame/modemanager.h
  DESTINATION ${HALVANE_HEADERS_TO}/frame COMPONENT Development)
install(FILES src/frame/schema/schema.h src/frame/schema/visit.h
  DESTINATION ${HALVANE_HEADERS_TO}/frame/schema COMPONENT Development)

install(EXPORT HalvaneTargets NAMESPACE ${HALVANE_PACKAGE}:: FILE ${HALVANE_PACKAGE}Targets.cmake
  DESTINATION ${HALVANE_INSTALL_CMAKEDIR} COMPONENT Development)
configure_package_config_file(cmake/HalvaneConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/${HALVANE_PACKAGE}Config.cmake
  INSTALL_DESTINATION ${HALVANE_INSTALL_CMAKEDIR})
# Before 1.0 a minor version may break the interface: a request for 0.1 is met
# by 0.1.x only. From 1.0 on, by any later version of the same major version.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(HALVANE_COMPATIBILITY SameMinorVersion)
else()
  set(HALVANE_COMPATIBILITY SameMajorVersion)
endif()
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/${HALVANE_PACKAGE}ConfigVersion.cmake
  COMPATIBILITY ${HALVANE_COMPATIBILITY})
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${HALVANE_PACKAGE}Config.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/${HALVANE_PACKAGE}ConfigVersion.cmake
  DESTINATION ${HALVANE_INSTALL_CMAKEDIR} COMPONENT Development)

# pkg-config: the paths are relative to the file itself, so that the package
# may be installed under any prefix.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(HALVANE_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
else()
  file(RELATIVE_PATH HALVANE_PC_UP /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
  string(REGEX REPLACE "/$" "" HALVANE_PC_UP "${HALVANE_PC_UP}")
  set(HALVANE_PC_PREFIX "\${pcfiledir}/${HALVANE_PC_UP}")
endif()
configure_file(cmake/halvane.pc.in ${CMAKE_CURRENT_BINARY_DIR}/${HALVANE_LIBRARY_NAME}.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${HALVANE_LIBRARY_NAME}.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
