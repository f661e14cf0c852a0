# Debian packages, made with `cpack -G DEB` in the build folder: a runtime
# package with the library and a development package with the headers, the
# CMake and pkg-config files and the halvane tool. The Qt 6 build makes
# packages of other names that install beside those of the Qt 5 build.
#
#   Qt 5: libhalvane0.1        libhalvane-dev
#   Qt 6: libhalvane-qt6-0.1   libhalvane-qt6-dev
#
# The runtime package is named after the soname, as Debian's libraries are
# (a hyphen between a name ending in a digit and the version); dpkg-shlibdeps
# finds the Qt packages that the library and the tool need.
if(HALVANE_LIBRARY_NAME MATCHES "[0-9]$")
  set(HALVANE_RUNTIME_PACKAGE lib${HALVANE_LIBRARY_NAME}-${HALVANE_SOVERSION})
else()
  set(HALVANE_RUNTIME_PACKAGE lib${HALVANE_LIBRARY_NAME}${HALVANE_SOVERSION})
endif()
set(HALVANE_DEVELOPMENT_PACKAGE lib${HALVANE_LIBRARY_NAME}-dev)
if(HALVANE_QT_VERSION EQUAL 6)
  set(HALVANE_QT_DEV_PACKAGE qt6-base-dev)
else()
  set(HALVANE_QT_DEV_PACKAGE qtbase5-dev)
endif()

set(CPACK_PACKAGE_NAME halvane${HALVANE_SUFFIX})
set(CPACK_PACKAGE_VENDOR "Halvane")
set(CPACK_PACKAGE_CONTACT "Halvane developers <halvane@example.org>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "data model of radio monitoring and direction-finding receivers")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_COMPONENTS_ALL Runtime Development)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The tool of the development package links the library of the runtime package.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${HALVANE_RUNTIME_PACKAGE})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "Halvane, the data model of radio monitoring and direction-finding receivers (Qt ${HALVANE_QT_VERSION})
 Value classes for the settings, capabilities, administration tables,
 measurement results and antenna matrix of a receiver, each with an XML form
 and two binary forms. This package holds the shared library.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_GENERATE_SHLIBS ON)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${HALVANE_DEVELOPMENT_PACKAGE})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${HALVANE_RUNTIME_PACKAGE} (= ${PROJECT_VERSION}), ${HALVANE_QT_DEV_PACKAGE}, pkg-config | pkgconf")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "Halvane, the data model of radio monitoring and direction-finding receivers (Qt ${HALVANE_QT_VERSION}): development files
 The headers, the CMake package ${HALVANE_PACKAGE}, the pkg-config module
 ${HALVANE_LIBRARY_NAME} and the tool halvane${HALVANE_SUFFIX}, which converts, validates and
 dumps documents.")

include(CPack)
