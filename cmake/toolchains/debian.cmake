# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

# What the toolchain files for Debian's cross compilers have in common. They set UICOV_ARCH (Debian's name),
# UICOV_TRIPLET, CMAKE_SYSTEM_PROCESSOR and UICOV_EMULATOR, and include this.
set(CMAKE_SYSTEM_NAME Linux)

get_filename_component(_root ${CMAKE_CURRENT_LIST_DIR}/../.. ABSOLUTE)
set(UICOV_SYSROOT ${_root}/build/sysroots/${UICOV_ARCH} CACHE PATH "What scripts/sysroot unpacked")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES UICOV_SYSROOT)
if(NOT EXISTS ${UICOV_SYSROOT}/usr/include)
    message(FATAL_ERROR "There is no sysroot at ${UICOV_SYSROOT}; make it with: scripts/sysroot ${UICOV_ARCH}")
endif()
set(CMAKE_SYSROOT ${UICOV_SYSROOT})
set(CMAKE_LIBRARY_ARCHITECTURE ${UICOV_TRIPLET})
set(CMAKE_CXX_COMPILER ${UICOV_TRIPLET}-g++)

list(APPEND CMAKE_FIND_ROOT_PATH ${UICOV_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Qt's packages name the programs of the sysroot, which do not run here.
set(UICOV_QT_HOST_TOOLS /usr/lib/qt5/bin)

# Programs of the build, and the tests, run under emulation.
find_program(UICOV_EMULATOR_PATH ${UICOV_EMULATOR})
if(UICOV_EMULATOR_PATH)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${UICOV_EMULATOR_PATH} -L ${UICOV_SYSROOT})
endif()
