# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

# Debian packages: "cpack -G DEB" in a build folder makes
#   uicov-device   what an application is recorded with: the extension, the host stand-in and the starter
#   uicov          the command, for the workstation
#   uicov-dev      headers, the model library and the package configuration
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME uicov)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "the makers of uicov <uicov@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL device workstation development)
if(NOT UICOV_BUILD_COMMAND)
    list(REMOVE_ITEM CPACK_COMPONENTS_ALL workstation)
endif()

if(UICOV_ARCH)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${UICOV_ARCH})
endif()

# Written down, since what a library of another architecture needs cannot be asked for here. The programs run
# with what they were compiled against, or newer.
set(runtime "libc6 (>= 2.34), libgcc-s1, libstdc++6 (>= 11)")
string(REGEX MATCH "^[0-9]+\\.[0-9]+" qt_release ${Qt5_VERSION})
set(gui "libqt5core5a (>= ${qt_release}), libqt5gui5 (>= ${qt_release}) | libqt5gui5-gles (>= ${qt_release})")

set(CPACK_DEBIAN_DEVICE_PACKAGE_NAME uicov-device)
set(CPACK_DEBIAN_DEVICE_PACKAGE_DEPENDS
    "${runtime}, ${gui}, libqt5widgets5 (>= ${qt_release}), libqt5quick5 (>= ${qt_release}) | libqt5quick5-gles (>= ${qt_release})")
set(CPACK_COMPONENT_DEVICE_DESCRIPTION
    "records how the user interface of Qt 5 applications is used
An application is started with a few environment variables set and writes a
recording; uicov on a workstation says what was used and what was not.")

set(CPACK_DEBIAN_WORKSTATION_PACKAGE_NAME uicov)
set(CPACK_DEBIAN_WORKSTATION_PACKAGE_DEPENDS
    "${runtime}, ${gui}, libqt5sql5 (>= ${qt_release}), libqt5sql5-sqlite, libtomlplusplus3 (>= 3.3), libnettle8")
set(CPACK_DEBIAN_WORKSTATION_PACKAGE_RECOMMENDS "uicov-device (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_WORKSTATION_PACKAGE_SUGGESTS "xvfb, xauth")
set(CPACK_COMPONENT_WORKSTATION_DESCRIPTION
    "GUI coverage for Qt 5 applications
Says which windows, menus, buttons and inputs of an application its tests
used, and which they never touched: as a table, a web page or a file that a
CI job can judge. With uicov-device it records on the workstation as well.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME uicov-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "qtbase5-dev")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "element model and host interface of uicov, for programs of your own
Headers, a static library and a CMake package configuration.")

include(CPack)
